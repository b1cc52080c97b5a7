#include "replay/internet/ssl.h"

#include <algorithm>
#include <array>
#include <utility>

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

ssl::ssl(const address::base& server, const std::string& host_name,
         const certificate_trust& trust) {
  open(server);
  connect(server);
  set_receive_timeout();
  const platform::HandshakeStream stream = {
      [this](const char* bytes, std::size_t count) { send_all(bytes, count); },
      [this](char* bytes, std::size_t size) { return receive(bytes, size); }};
  try {
    platform::SecureStream established = platform::clientHandshake(stream, host_name, trust);
    encrypted_input_ = std::move(established.leftOver);
    context_ = established.context;
    stream_sizes_ = established.sizes;
  } catch (const platform::SecurityFailure& failure) {
    raise_status(failure.operation(), failure.status());
  }
}

ssl::ssl(platform::SecureStream established)
    : encrypted_input_(std::move(established.leftOver)),
      context_(established.context),
      stream_sizes_(established.sizes) {}

ssl::~ssl() { platform::security.DeleteSecurityContext(&context_); }

void ssl::flush() {
  const auto& [header_size, trailer_size, maximum_size] = stream_sizes_;
  while (!write_queue().empty()) {
    const auto size =
        static_cast<std::uint32_t>(std::min<std::size_t>(write_queue().size(), maximum_size));
    std::vector<char> message(std::size_t{header_size} + size + trailer_size);
    char* const data = message.data() + header_size;
    write_queue().view().copy(data, size);
    write_queue().remove(size);
    std::array<platform::SecurityBuffer, 4> buffers = {{
        {header_size, secbuffer::stream_header, message.data()},
        {size, secbuffer::data, data},
        {trailer_size, secbuffer::stream_trailer, data + size},
        {0, secbuffer::empty, nullptr},
    }};
    platform::SecurityBufferList list{list_version, buffers.size(), buffers.data()};
    const std::uint32_t status = platform::security.EncryptMessage(&context_, 0, &list, 0);
    if (status != platform::sec::ok) raise_status("EncryptMessage", status);
    // At full size, whatever lengths the provider wrote back.
    send_all(message.data(), message.size());
  }
}

void ssl::fill() {
  bool more = true;
  std::uint32_t status = platform::sec::i_continue_needed;
  while (more) {
    if (encrypted_input_.empty() || status == platform::sec::e_incomplete_message) receive_more();
    // Made anew each time: the provider writes over it, also where it answers "incomplete".
    std::array<platform::SecurityBuffer, 4> buffers{};
    buffers[0] = {static_cast<std::uint32_t>(encrypted_input_.size()), secbuffer::data,
                  encrypted_input_.data()};
    platform::SecurityBufferList list{list_version, buffers.size(), buffers.data()};
    status = platform::security.DecryptMessage(&context_, &list, 0, nullptr);
    if (status == platform::sec::ok) {
      more = !take_message(buffers.data(), buffers.size());
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
bool ssl::take_message(platform::SecurityBuffer* buffers, std::size_t count) {
  const std::vector<char> message = std::exchange(encrypted_input_, {});
  bool has_data = false;
  for (std::size_t index = 1; index < count; ++index) {
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
