// The operations on an established context, over OpenSSL.
//
// Messages are records of TLS 1.2 with AES-GCM: a header of 5 bytes and the 8 of the explicit
// nonce, the text, and a tag of 16.
#include <openssl/err.h>

#include <cstring>

#include "platform/posix/openssl_connection.h"
#include "platform/posix/openssl_records.h"
#include "platform/security.h"

namespace platform {
namespace {

// Types of records, and the largest that a peer may send: a text of 2^14 bytes and 2,048 more.
constexpr unsigned char renegotiationType = 22;
constexpr std::size_t lengthSize = 5;
constexpr std::size_t largestBody = 16384 + 2048;

OpensslConnection* connectionOf(const SecurityContext* context) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the record of the context holds numbers
  return reinterpret_cast<OpensslConnection*>(context->lower);
}

SecurityBuffer* bufferOf(SecurityBufferList* message, std::uint32_t type) {
  for (std::uint32_t index = 0; index < message->cBuffers; ++index) {
    if (message->pBuffers[index].BufferType == type) return &message->pBuffers[index];
  }
  return nullptr;
}

// Takes the record that the connection has made into the buffers; false if it has another size.
bool takeRecord(OpensslConnection& connection, SecurityBuffer& header, SecurityBuffer& data,
                SecurityBuffer& trailer) {
  if (connection.pendingOutput() != recordHeaderSize + data.cbBuffer + recordTrailerSize ||
      header.cbBuffer < recordHeaderSize || trailer.cbBuffer < recordTrailerSize) {
    connection.dropOutput();
    return false;
  }
  header.cbBuffer = recordHeaderSize;
  trailer.cbBuffer = recordTrailerSize;
  for (const SecurityBuffer* part : {&header, &data, &trailer}) {
    connection.takeOutput(static_cast<char*>(part->pvBuffer), part->cbBuffer);
  }
  return true;
}

std::uint32_t encrypt(SecurityContext* context, std::uint32_t /*quality*/,
                      SecurityBufferList* message, std::uint32_t /*sequence*/) {
  OpensslConnection& connection = *connectionOf(context);
  SecurityBuffer* const header = bufferOf(message, secbuffer::stream_header);
  SecurityBuffer* const data = bufferOf(message, secbuffer::data);
  SecurityBuffer* const trailer = bufferOf(message, secbuffer::stream_trailer);
  if (header == nullptr || data == nullptr || trailer == nullptr) return sec::e_internal_error;
  ERR_clear_error();
  std::size_t written = 0;
  if (SSL_write_ex(connection.ssl(), data->pvBuffer, data->cbBuffer, &written) != 1 ||
      written != data->cbBuffer || !takeRecord(connection, *header, *data, *trailer)) {
    return sec::e_encrypt_failure;
  }
  return sec::ok;
}

// What reading a record that gave no text means.
std::uint32_t statusOfNothing(const OpensslConnection& connection) {
  switch (SSL_get_error(connection.ssl(), 0)) {
    case SSL_ERROR_WANT_READ:
      return sec::ok;  // an empty text, or a warning
    case SSL_ERROR_ZERO_RETURN:
      return sec::i_context_expired;
    default:
      return sec::e_message_altered;
  }
}

// The one record at the start of `input`, whose text takes the place of its encrypted form.
std::uint32_t decryptRecord(OpensslConnection& connection, SecurityBuffer* buffers,
                            std::size_t recordSize) {
  auto* const input = static_cast<char*>(buffers[0].pvBuffer);
  const std::size_t inputSize = buffers[0].cbBuffer;
  connection.put(input, recordSize);
  ERR_clear_error();
  std::size_t textSize = 0;
  const int result = SSL_read_ex(connection.ssl(), input, recordSize, &textSize);
  const std::uint32_t status = result == 1 ? sec::ok : statusOfNothing(connection);
  connection.dropOutput();  // no answers to warnings: the stream is not told of them
  if (status != sec::ok) return status;
  const std::size_t extraSize = inputSize - recordSize;
  buffers[0] = {0, secbuffer::stream_header, input};
  buffers[1] = {static_cast<std::uint32_t>(textSize), secbuffer::data, input};
  buffers[2] = {0, secbuffer::stream_trailer, input + textSize};
  buffers[3] = {};
  if (extraSize > 0) {
    buffers[3] = {static_cast<std::uint32_t>(extraSize), secbuffer::extra, input + recordSize};
  }
  return sec::ok;
}

std::uint32_t decrypt(SecurityContext* context, SecurityBufferList* message,
                      std::uint32_t /*sequence*/, std::uint32_t* /*quality*/) {
  if (message->cBuffers < 4 || message->pBuffers[0].BufferType != secbuffer::data) {
    return sec::e_internal_error;
  }
  SecurityBuffer* const buffers = message->pBuffers;
  if (buffers[0].cbBuffer < lengthSize) return sec::e_incomplete_message;
  unsigned char header[lengthSize];
  std::memcpy(header, buffers[0].pvBuffer, lengthSize);
  const std::size_t bodySize = static_cast<std::size_t>(header[3]) << 8 | header[4];
  if (bodySize > largestBody) return sec::e_illegal_message;
  if (buffers[0].cbBuffer < lengthSize + bodySize) return sec::e_incomplete_message;
  // A peer that wants a new handshake says so in the type of its record, which is not encrypted.
  if (header[0] == renegotiationType) return sec::i_renegotiate;
  return decryptRecord(*connectionOf(context), buffers, lengthSize + bodySize);
}

// Results lie within the caller's own bytes.
std::uint32_t freeBuffer(void* /*buffer*/) { return sec::ok; }

std::uint32_t deleteContext(SecurityContext* context) {
  delete connectionOf(context);
  *context = {};
  return sec::ok;
}

}  // namespace

SecurityApi security{encrypt, decrypt, freeBuffer, deleteContext};

}  // namespace platform
