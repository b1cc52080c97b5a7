// Eight threads that use everything of the library at once, each with objects of its own, against
// servers of this machine. The preset "threads" tells which memory they share; every other build
// tells an answer that is another thread's.
#include <sys/socket.h>
#include <unistd.h>

#include <functional>
#include <latch>
#include <thread>
#include <vector>

#include "lib/replay/internet/handshakes.h"
#include "lib/replay/internet/posix/certificates.h"
#include "platform/posix/openssl_connection.h"
#include "replay/directory_listing.h"
#include "replay/exception_w.h"
#include "replay/internet/detail/byte_order.h"
#include "replay/internet/detail/name_lookup_emulation.h"
#include "replay/internet/environment.h"
#include "replay/internet/http.h"
#include "replay/internet/web_request.h"
#include "replay/md5.h"
#include "replay/text.h"
#include "replay/unicode.h"
#include "replay/variant.h"

namespace {

using namespace replay::internet;
using address::ip4;
using platform::sockets;
using test::failureOf;

// Serves the connections to a port of its own one after the other, on a thread of its own.
class Server {
 public:
  explicit Server(std::function<void(int)> serve) {
    socklen_t length = sizeof address_;
    auto* const record = reinterpret_cast<sockaddr*>(&address_);
    ::bind(listener_, record, length);
    ::listen(listener_, 64);
    ::getsockname(listener_, record, &length);
    thread_ = std::thread([this, serve = std::move(serve)] {
      for (int client = 0; (client = ::accept(listener_, nullptr, nullptr)) >= 0;) {
        serve(client);
        ::close(client);
      }
    });
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server() {
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
  }

  std::uint16_t port() const { return network_order(address_.sin_port); }

 private:
  platform::sockaddr_in address_{2, 0, network_order(0x7F000001U), {}};
  int listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
  std::thread thread_;
};

// The answer of the server to a request: its path as a value.
void answerWithPath(int client) {
  std::string asked;
  char bytes[1024];
  while (!asked.ends_with("\r\n\r\n")) {
    const ssize_t count = ::recv(client, bytes, sizeof bytes, 0);
    if (count <= 0) return;
    asked.append(bytes, static_cast<std::size_t>(count));
  }
  const std::string answer =
      "HTTP/1.1 200 OK\r\n\r\n<path>" + replay::split(asked, " ")[1] + "</path>";
  ::send(client, answer.data(), answer.size(), MSG_NOSIGNAL);
}

// Sends back what the client sent first, encrypted.
void echoEncrypted(SSL_CTX* settings, int client) {
  const std::unique_ptr<SSL, platform::OpensslFree<SSL_free>> connection(SSL_new(settings));
  SSL_set_fd(connection.get(), client);
  char text[1024];
  const int size =
      SSL_accept(connection.get()) == 1 ? SSL_read(connection.get(), text, sizeof text) : 0;
  if (size > 0) SSL_write(connection.get(), text, size);
}

// `own` is another text for each thread and round.
void useTexts(const std::string& own, int number) {
  const std::u16string wide = replay::unicode::to_wide(own, 1252);
  EXPECT_EQ(replay::unicode::to_narrow(wide, 65001, true), own);
  EXPECT_EQ(replay::unicode::to_narrow(replay::unicode::to_wide(own, 1251), 1251, true), own);
  EXPECT_EQ(replay::unicode::codepage_of_name("KOI8-R"), 20866);
  EXPECT_EQ(replay::md5_hex(own), replay::md5_hex(replay::lowered(own)));
  EXPECT_EQ(replay::variant(own.substr(own.find('/') + 1)).as_integer(), number);
  EXPECT_STREQ(replay::exception_w(wide).message(), own.c_str());
  EXPECT_FALSE(replay::list_directory(test::certificates().text() + "/", "*.der", false, true, true)
                   .empty());
}

// `number`, from 0 to 255, is the last byte of an address of this machine.
void lookUp(int number) {
  EXPECT_TRUE(ip4("localhost", 80).equal_to(ip4("127.0.0.1", 80)));
  const std::string dotted = "127.0.0." + std::to_string(number);
  EXPECT_EQ(ip4(dotted, 80).name(2), dotted);
  EXPECT_EQ(sockets.inet_ntoa(sockets.inet_addr(dotted.c_str())), dotted);
  const platform::hostent* const host = sockets.gethostbyname(dotted.c_str());
  ASSERT_NE(host, nullptr);
  EXPECT_EQ(host->h_name, dotted);
  EXPECT_EQ(host->h_addresses[0][3], static_cast<char>(number));
  const auto [name, port] = std::to_array<std::pair<const char*, int>>(
      {{"http", 80},
       {"ssh", 22},
       {"domain", 53},
       {"https", 443}})[static_cast<unsigned>(number) % 4];
  platform::addrinfo* list = nullptr;
  EXPECT_EQ(address::emulation::getaddrinfo("localhost", name, nullptr, &list), 0);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(network_order(list->ai_addr->sin_port), port) << name;
  char hostName[64] = "";
  char service[64] = "";
  EXPECT_EQ(address::emulation::getnameinfo(list->ai_addr, 16, hostName, 64, service, 64, 0), 0);
  EXPECT_STREQ(service, name);
  address::emulation::freeaddrinfo(list);
}

void ask(std::uint16_t port, const std::string& own) {
  const std::string url = "http://localhost:" + std::to_string(port);
  EXPECT_EQ(http::get(http::request(url + "/" + own)).body, "<path>/" + own + "</path>");
  WebRequest request;
  request.base_url = url + "/";
  request.parameters["own"] = own;
  request.execute();
  EXPECT_EQ(request.value("path"),
            "/?own=" + replay::split(own, "/")[0] + "%2F" + replay::split(own, "/")[1]);
  transport::tcp::raw plain;
  plain.open(ip4());
  plain.connect(ip4("127.0.0.1", port));
  plain.write("GET " + own + " \r\n\r\n");
  std::string line;
  plain.read_line(line);
  EXPECT_EQ(line, "HTTP/1.1 200 OK");
  transport::udp::raw datagrams;
  datagrams.open(ip4());
  transport::tcp::raw unconnected;
  unconnected.open(ip4());
  EXPECT_EQ(failureOf([&] { unconnected.fill(); }),
            "internet.transport.connection_failed[recv() failed]");
}

void echo(std::uint16_t port, const std::string& own) {
  test::SslStream stream(ip4("127.0.0.1", port), "localhost",
                         test::trusting(test::certificates().path(), "authority"));
  stream.write(own);
  std::string answer;
  stream.read_some(answer);
  EXPECT_EQ(answer, own);
}

TEST(Threads, SeparateObjectsAreSafeAndAnswersReachTheirThread) {
  constexpr int threadCount = 8;
  constexpr int rounds = 4;
  const std::string key = test::certificates().text() + "/good";
  const platform::SslSettings settings(SSL_CTX_new(TLS_server_method()));
  SSL_CTX_set_max_proto_version(settings.get(), TLS1_2_VERSION);
  SSL_CTX_use_certificate_chain_file(settings.get(), (key + ".crt").c_str());
  SSL_CTX_use_PrivateKey_file(settings.get(), (key + ".key").c_str(), SSL_FILETYPE_PEM);
  const Server plain(answerWithPath);
  const Server encrypted([&](int client) { echoEncrypted(settings.get(), client); });
  std::latch start(threadCount);
  std::vector<std::thread> threads;
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([&, thread] {
      start.arrive_and_wait();
      for (int round = 0; round < rounds; ++round) {
        const int number = thread * rounds + round;
        const std::string own = "own/" + std::to_string(number);
        const environment started;
        const environment another;
        lookUp(number + 1);
        useTexts(own, number);
        ask(plain.port(), own);
        echo(encrypted.port(), own);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
