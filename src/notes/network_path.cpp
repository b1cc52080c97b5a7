#include "notes/network_path.h"

#include "notes/api.h"
#include "notes/library_text.h"

namespace notes {
namespace {

// A block of the library, locked as long as this lives and freed then.
class LockedBlock {
 public:
  explicit LockedBlock(HANDLE block) : block_(block), data_(OSLockObject(block)) {}
  LockedBlock(const LockedBlock&) = delete;
  LockedBlock& operator=(const LockedBlock&) = delete;
  ~LockedBlock() {
    if (data_ != nullptr) OSUnlockObject(block_);
    OSMemFree(block_);
  }

  /// Null if it could not be locked.
  const char* data() const { return static_cast<const char*>(data_); }

 private:
  HANDLE block_;
  void* data_;
};

}  // namespace

STATUS parsePath(const std::string& path, NetworkPath& parts) {
  TextBuffer<NOTES_PATH_SIZE> port;
  TextBuffer<NOTES_PATH_SIZE> server;
  TextBuffer<NOTES_PATH_SIZE> file;
  const STATUS status = OSPathNetParse(path.c_str(), port.data(), server.data(), file.data());
  parts = {port.data(), server.data(), file.data()};
  return status;
}

STATUS constructPath(const std::string& server, const std::string& file, std::string& path) {
  TextBuffer<NOTES_PATH_SIZE> buffer;
  const STATUS status = OSPathNetConstruct(nullptr, server.c_str(), file.c_str(), buffer.data());
  path = buffer.data();
  return status;
}

STATUS AddressBookList::ask(const std::string& server) {
  WORD length = 0;
  const STATUS status =
      NAMEGetAddressBooks(server.empty() ? nullptr : server.c_str(), 0, &count_, &length, &block_);
  if (status != 0) *this = {};
  return status;
}

// The paths stand one behind the other, each with its closing zero.
void AddressBookList::forEach(const std::function<void(std::string_view)>& visit) const {
  if (count_ == 0) return;
  const LockedBlock block(block_);
  const char* position = block.data();
  if (position == nullptr) return;
  for (WORD index = 0; index < count_; ++index) {
    const std::string_view path(position);
    visit(path);
    position += path.size() + 1;
  }
}

}  // namespace notes
