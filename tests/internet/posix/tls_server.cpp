#include "internet/posix/tls_server.h"

#include <openssl/err.h>
#include <openssl/ssl.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "platform/posix/openssl_connection.h"

namespace test {
namespace {

platform::SslSettings settings;
std::unique_ptr<platform::OpensslConnection> connection;

// Both ends share OpenSSL's list of errors, on which the client must not find the server's.
void takeOutput() {
  ERR_clear_error();
  std::string bytes(connection->pendingOutput(), '\0');
  connection->takeOutput(bytes.data(), bytes.size());
  TlsServer::waiting += bytes;
}

int handle(platform::SocketHandle, const char* bytes, int count, int) {
  connection->put(bytes, static_cast<std::size_t>(count));
  const bool wasFinished = SSL_is_init_finished(connection->ssl()) == 1;
  if (!wasFinished && SSL_accept(connection->ssl()) == 1) TlsServer::send(TlsServer::greeting);
  char text[20'000];
  std::size_t size = 0;
  while (SSL_is_init_finished(connection->ssl()) == 1 &&
         SSL_read_ex(connection->ssl(), text, sizeof text, &size) == 1) {
    TlsServer::received.append(text, size);
  }
  takeOutput();
  return count;
}

int deliver(platform::SocketHandle, char* bytes, int count, int) {
  const auto most = static_cast<std::size_t>(std::min(count, TlsServer::largest));
  const std::size_t taken = TlsServer::waiting.copy(bytes, most);
  TlsServer::waiting.erase(0, taken);
  platform::sockets.WSASetLastError(TlsServer::ending);
  return taken == 0 && TlsServer::ending != 0 ? -1 : static_cast<int>(taken);
}

}  // namespace

const TemporaryFolder& certificates() {
  static const TemporaryFolder folder;
  static const int status =
      std::system((SOURCE_FOLDER "/tests/internet/make_certificates.sh " + folder.text()).c_str());
  if (status != 0) throw std::runtime_error(contentOf(folder.path() / "log.txt"));
  return folder;
}

TlsServer::TlsServer(const std::string& name, const char* suites, int version) {
  const std::string key = certificates().text() + "/" + name;
  settings.reset(SSL_CTX_new(TLS_server_method()));
  SSL_CTX_set_min_proto_version(settings.get(), version);
  SSL_CTX_set_max_proto_version(settings.get(), version);
  if (SSL_CTX_set_cipher_list(settings.get(), suites) != 1 ||
      SSL_CTX_use_certificate_chain_file(settings.get(), (key + ".crt").c_str()) != 1 ||
      SSL_CTX_use_PrivateKey_file(settings.get(), (key + ".key").c_str(), SSL_FILETYPE_PEM) != 1) {
    throw std::runtime_error("no TLS server");
  }
  greeting.clear();
  largest = 1 << 30;
  ending = 0;
  platform::SocketsApi& api = platform::sockets;
  api.socket = [](int, int, int) -> platform::SocketHandle { return 7; };
  api.connect = [](platform::SocketHandle, const void*, int) {
    connection = std::make_unique<platform::OpensslConnection>(settings.get());
    waiting.clear();
    received.clear();
    return 0;
  };
  api.setsockopt = [](platform::SocketHandle, int, int, const char*, int) { return 0; };
  api.closesocket = [](platform::SocketHandle) { return 0; };
  api.send = handle;
  api.recv = deliver;
}

TlsServer::~TlsServer() {
  connection.reset();
  settings.reset();
}

void TlsServer::send(const std::string& text) {
  std::size_t written = 0;
  if (!text.empty()) SSL_write_ex(connection->ssl(), text.data(), text.size(), &written);
  takeOutput();
}

void TlsServer::sendClosing() {
  SSL_shutdown(connection->ssl());
  takeOutput();
}

void TlsServer::sendWish() {
  SSL_renegotiate(connection->ssl());
  SSL_do_handshake(connection->ssl());
  takeOutput();
}

}  // namespace test
