// A server on this machine that answers as a test says, however badly, at the other end of a real
// connection. One thread works both ends: each receive of the client first has the server send its
// next piece.
#pragma once

#include <deque>
#include <string>

#include "internet/tables.h"
#include "replay/internet/address.h"
#include "replay/internet/environment.h"

namespace test {

class Peer : public Tables {
 public:
  /// What comes behind the last piece: the server closes in order, closes with a reset, or is
  /// silent until the client has waited long enough. The number of an error makes the client's
  /// receive fail with it.
  static constexpr int close = 0;
  static constexpr int reset = -1;
  static constexpr int silence = -2;

  /// Listens on a port of its own. A server that does not listen refuses connections, and its port
  /// is taken all the same.
  explicit Peer(bool listens = true);
  ~Peer();

  /// Has the next connection answered with `bytes` in pieces of `pieceSize`, and forgets what was
  /// noted of the last one.
  static void answer(const std::string& bytes, std::size_t pieceSize, int ending = close);

  static replay::internet::address::ip4 address();
  static std::string url(const std::string& path);

  static inline std::deque<std::string> pieces;
  static inline int ending = close;
  static inline int largestSend = 1 << 30;  ///< what one send of the client takes

  static inline std::string calls;     ///< the client's calls with their arguments
  static inline std::string received;  ///< what has arrived at the server

 private:
  replay::internet::environment environment_;
};

}  // namespace test
