// The system's security provider: encrypted messages over a stream that somebody else carries.
//
// The table has the four operations that work on an established context, with the records, buffer
// types and status numbers of Windows on every system. On Windows it holds those of Secur32,
// elsewhere thin adapters over OpenSSL; a build without OpenSSL has operations that fail. Tests
// replace single members. How a context comes about is no part of the table: it is one function,
// written twice.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "platform/system_call.h"

namespace platform {

/// Status numbers of the provider, by their Windows names in lower case.
namespace sec {
inline constexpr std::uint32_t ok = 0;
inline constexpr std::uint32_t i_continue_needed = 0x00090312;
inline constexpr std::uint32_t i_context_expired = 0x00090317;
inline constexpr std::uint32_t i_renegotiate = 0x00090321;
inline constexpr std::uint32_t e_unsupported_function = 0x80090302;
inline constexpr std::uint32_t e_internal_error = 0x80090304;
inline constexpr std::uint32_t e_message_altered = 0x8009030F;
inline constexpr std::uint32_t e_incomplete_message = 0x80090318;
inline constexpr std::uint32_t e_wrong_principal = 0x80090322;
inline constexpr std::uint32_t e_untrusted_root = 0x80090325;
inline constexpr std::uint32_t e_illegal_message = 0x80090326;
inline constexpr std::uint32_t e_cert_expired = 0x80090328;
inline constexpr std::uint32_t e_encrypt_failure = 0x80090329;
inline constexpr std::uint32_t e_algorithm_mismatch = 0x80090331;
}  // namespace sec

/// What a SecurityBuffer holds.
namespace secbuffer {
inline constexpr std::uint32_t empty = 0;
inline constexpr std::uint32_t data = 1;
inline constexpr std::uint32_t extra = 5;
inline constexpr std::uint32_t stream_trailer = 6;
inline constexpr std::uint32_t stream_header = 7;
}  // namespace secbuffer

/// An established security context; only the provider looks inside.
struct SecurityContext {
  std::uintptr_t lower;
  std::uintptr_t upper;
};

struct SecurityBuffer {
  std::uint32_t cbBuffer;  ///< Bytes.
  std::uint32_t BufferType;
  void* pvBuffer;
};

struct SecurityBufferList {
  std::uint32_t ulVersion;
  std::uint32_t cBuffers;
  SecurityBuffer* pBuffers;
};

struct SecurityApi {
  std::uint32_t(SYSTEM_CALL* EncryptMessage)(SecurityContext* context, std::uint32_t quality,
                                             SecurityBufferList* message, std::uint32_t sequence);
  std::uint32_t(SYSTEM_CALL* DecryptMessage)(SecurityContext* context, SecurityBufferList* message,
                                             std::uint32_t sequence, std::uint32_t* quality);
  std::uint32_t(SYSTEM_CALL* FreeContextBuffer)(void* buffer);
  std::uint32_t(SYSTEM_CALL* DeleteSecurityContext)(SecurityContext* context);
};

extern SecurityApi security;

/// Bytes in front of and behind an encrypted message, and the most that one message holds.
struct SecurityStreamSizes {
  std::uint32_t cbHeader;
  std::uint32_t cbTrailer;
  std::uint32_t cbMaximumMessage;
};

/// The connected stream under a handshake. Both may raise, which passes through the handshake.
struct HandshakeStream {
  std::function<void(const char* bytes, std::size_t count)> send;
  /// Gives the number of bytes, at least one.
  std::function<std::size_t(char* bytes, std::size_t size)> receive;
};

/// What makes a server's certificate good.
struct CertificateTrust {
  /// A certificate, DER, that is trusted in place of the system's authorities: the server's own or
  /// one above it. What stands above the trusted one does not count. Empty for the system's
  /// authorities.
  std::string certificate;
  /// Takes every certificate, whoever signed it and whatever name it has: nobody knows then who is
  /// at the other end.
  bool acceptEverything = false;
};

struct SecureStream {
  SecurityContext context;
  SecurityStreamSizes sizes;
  std::vector<char> leftOver;  ///< Bytes that were received behind the handshake.
};

/// An operation of the provider failed. A certificate that is not good fails the operation that
/// establishes the context.
class SecurityFailure : public std::exception {
 public:
  SecurityFailure(const char* operation, std::uint32_t status)
      : operation_(operation), status_(status) {}
  const char* operation() const { return operation_; }
  std::uint32_t status() const { return status_; }
  const char* what() const noexcept override { return operation_; }

 private:
  const char* operation_;
  std::uint32_t status_;
};

/// Runs the client's side of a handshake with the server `host`, a name or a dotted address, and
/// checks its certificate: chain, validity and name, which has to be one of the alternative names,
/// and raises the first fault of these. Only TLS 1.2 with an AES-GCM suite is accepted: there every
/// message has a header and a trailer of exactly the sizes told, so that messages may be sent at
/// full size without a look at the lengths that the provider gives back. Raises SecurityFailure,
/// and what the stream raises.
SecureStream clientHandshake(const HandshakeStream& stream, const std::string& host,
                             const CertificateTrust& trust);

}  // namespace platform
