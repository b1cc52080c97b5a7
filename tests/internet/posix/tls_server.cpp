#include "internet/posix/tls_server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace test {
namespace {

sockaddr_in localAddress(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// A port that was free a moment ago: the server does not tell which one it has taken.
std::uint16_t freePort() {
  const int probe = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = localAddress(0);
  socklen_t length = sizeof address;
  auto* const record = reinterpret_cast<sockaddr*>(&address);
  const bool bound =
      ::bind(probe, record, length) == 0 && ::getsockname(probe, record, &length) == 0;
  ::close(probe);
  if (!bound) throw std::runtime_error("no free port");
  return ntohs(address.sin_port);
}

void writeAll(int pipe, const std::string& bytes) {
  for (std::size_t sent = 0; sent < bytes.size();) {
    const ssize_t count = ::write(pipe, bytes.data() + sent, bytes.size() - sent);
    if (count <= 0) break;
    sent += static_cast<std::size_t>(count);
  }
}

[[noreturn]] void execute(const std::vector<std::string>& command, int input,
                          const std::string& output) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  ::dup2(input, STDIN_FILENO);
  ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600), STDOUT_FILENO);
  ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
  ::execvp(arguments[0], arguments.data());
  std::_Exit(127);
}

void endProcess(pid_t& process) {
  if (process == 0) return;
  ::kill(process, SIGKILL);
  ::waitpid(process, nullptr, 0);
  process = 0;
}

// Whether the kernel lists a socket that listens at a port of 127.0.0.1. Connecting to find out
// would take the server's one connection.
bool isListening(std::uint16_t port) {
  char pattern[32];
  std::snprintf(pattern, sizeof pattern, "0100007F:%04X 00000000:0000 0A", port);
  return contentOf("/proc/net/tcp").find(pattern) != std::string::npos;
}

}  // namespace

const TemporaryFolder& certificates() {
  static const TemporaryFolder folder;
  static const int status =
      std::system((SOURCE_FOLDER "/tests/internet/make_certificates.sh " + folder.text()).c_str());
  if (status != 0) throw std::runtime_error(contentOf(folder.path() / "log.txt"));
  return folder;
}

TlsServer::TlsServer(const std::string& name, const std::vector<std::string>& options,
                     const std::string& input)
    : port_(freePort()) {
  const std::string key = certificates().text() + "/" + name;
  std::vector<std::string> command = {
      "openssl", "s_server",   "-accept", "127.0.0.1:" + std::to_string(port_),
      "-cert",   key + ".crt", "-key",    key + ".key"};
  command.insert(command.end(), options.begin(), options.end());
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  input_ = ends[1];
  feeder_ = ::fork();
  if (feeder_ == 0) {
    writeAll(input_, input);
    std::_Exit(0);
  }
  process_ = ::fork();
  if (process_ == 0) execute(command, ends[0], folder_.text() + "/output");
  ::close(ends[0]);
  while (!isListening(port_)) {
    if (::waitpid(process_, nullptr, WNOHANG) != 0) throw std::runtime_error("no TLS server");
    std::this_thread::yield();
  }
}

TlsServer::~TlsServer() {
  kill();
  endProcess(feeder_);
  ::close(input_);
}

std::string TlsServer::output() const { return contentOf(folder_.path() / "output"); }

std::size_t TlsServer::received() const {
  return std::filesystem::file_size(folder_.path() / "output");
}

void TlsServer::suspend() const {
  ::kill(process_, SIGSTOP);
  ::waitpid(process_, nullptr, WUNTRACED);
}

void TlsServer::kill() { endProcess(process_); }

}  // namespace test
