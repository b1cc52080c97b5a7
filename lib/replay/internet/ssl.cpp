#include "replay/internet/ssl.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "platform/security.h"
#include "replay/text.h"

namespace replay::internet::transport::tcp {
namespace {

namespace secbuffer = platform::secbuffer;

constexpr std::size_t receive_size = 4096;
constexpr std::uint32_t list_version = 0;

[[noreturn]] void raise_status(const char* operation, std::uint32_t status) {
  throw ssl::security(format("%s returned status 0x%.8x", operation, status));
}

}  // namespace

// What the provider reads and writes of one encrypted message.
struct ssl::message : std::array<platform::SecurityBuffer, 4> {
  platform::SecurityBufferList list() { return {list_version, 4, data()}; }
};

ssl::ssl(const address::base& server, const std::string& host_name)
    : ssl(server, host_name, certificate_trust{}) {}

ssl::ssl(const address::base& server, const std::string& host_name,
         const certificate_trust& trust) {
  open(server);
  connect(server);
  set_receive_timeout();
  const platform::HandshakeStream stream = {
      [this](const char* bytes, std::size_t count) { send_all(bytes, count); },
      [this](char* bytes, std::size_t size) { return receive(bytes, size); }};
  try {
    platform::SecureStream established =
        platform::clientHandshake(stream, host_name, {trust.certificate, trust.acceptEverything});
    encrypted_input_ = std::move(established.leftOver);
    context_ = std::bit_cast<decltype(context_)>(established.context);
    header_size_ = established.sizes.cbHeader;
    trailer_size_ = established.sizes.cbTrailer;
    maximum_size_ = established.sizes.cbMaximumMessage;
  } catch (const platform::SecurityFailure& failure) {
    raise_status(failure.operation(), failure.status());
  }
}

ssl::~ssl() {
  auto context = std::bit_cast<platform::SecurityContext>(context_);
  platform::security.DeleteSecurityContext(&context);
}

void ssl::flush() {
  auto context = std::bit_cast<platform::SecurityContext>(context_);
  while (!write_queue().empty()) {
    const auto size =
        static_cast<std::uint32_t>(std::min<std::size_t>(write_queue().size(), maximum_size_));
    std::vector<char> bytes(std::size_t{header_size_} + size + trailer_size_);
    char* const data = bytes.data() + header_size_;
    write_queue().view().copy(data, size);
    write_queue().remove(size);
    message buffers = {{{
        {header_size_, secbuffer::stream_header, bytes.data()},
        {size, secbuffer::data, data},
        {trailer_size_, secbuffer::stream_trailer, data + size},
        {0, secbuffer::empty, nullptr},
    }}};
    platform::SecurityBufferList list = buffers.list();
    const std::uint32_t status = platform::security.EncryptMessage(&context, 0, &list, 0);
    if (status != platform::sec::ok) raise_status("EncryptMessage", status);
    // At full size, whatever lengths the provider wrote back.
    send_all(bytes.data(), bytes.size());
  }
}

void ssl::fill() {
  auto context = std::bit_cast<platform::SecurityContext>(context_);
  bool more = true;
  std::uint32_t status = platform::sec::i_continue_needed;
  while (more) {
    if (encrypted_input_.empty() || status == platform::sec::e_incomplete_message) receive_more();
    // Made anew each time: the provider writes over it, also where it answers "incomplete".
    message buffers{};
    buffers[0] = {static_cast<std::uint32_t>(encrypted_input_.size()), secbuffer::data,
                  encrypted_input_.data()};
    platform::SecurityBufferList list = buffers.list();
    status = platform::security.DecryptMessage(&context, &list, 0, nullptr);
    if (status == platform::sec::ok) {
      more = !take_message(buffers);
    } else if (status != platform::sec::e_incomplete_message) {
      raise_status("DecryptMessage", status);
    }
  }
}

// Some providers look at the five bytes of a record's header although fewer have arrived, which the
// room behind them makes harmless.
void ssl::receive_more() {
  const std::size_t size = encrypted_input_.size();
  encrypted_input_.resize(size + receive_size);
  try {
    encrypted_input_.resize(size + receive(encrypted_input_.data() + size, receive_size));
  } catch (...) {
    encrypted_input_.resize(size);
    throw;
  }
}

// Whether the message held data. The buffers point into the input, which gives its place to the
// bytes behind the message.
bool ssl::take_message(const message& buffers) {
  const std::vector<char> input = std::exchange(encrypted_input_, {});
  bool has_data = false;
  for (std::size_t index = 1; index < buffers.size(); ++index) {
    const auto& [size, type, pointer] = buffers[index];
    const auto* const bytes = static_cast<const char*>(pointer);
    if (type == secbuffer::data) {
      if (size != 0) read_queue().append({bytes, size});
      has_data = has_data || size != 0;
    } else if (type == secbuffer::extra) {
      encrypted_input_.reserve(size + receive_size);
      encrypted_input_.insert(encrypted_input_.end(), bytes, bytes + size);
    } else {
      continue;
    }
    platform::security.FreeContextBuffer(pointer);
  }
  return has_data;
}

}  // namespace replay::internet::transport::tcp
