#include "report/output.h"

#include <array>
#include <iostream>
#include <streambuf>
#include <utility>

#include "platform/replaced_files.h"
#include "report/files.h"
#include "report/text.h"

namespace reader {

class Output::FileBuffer : public std::streambuf {
 public:
  explicit FileBuffer(const std::string& name)
      : name_(name), replacement_(name, platform::Readers::usual) {
    require(replacement_.outcome(), name_, "written");
    setp(bytes_.data(), bytes_.data() + bytes_.size());
  }

  void finish() {
    writeOut();
    require(replacement_.finish(), name_, "written");
  }

 protected:
  int_type overflow(int_type byte) override {
    writeOut();
    if (traits_type::eq_int_type(byte, traits_type::eof())) return traits_type::not_eof(byte);
    return sputc(traits_type::to_char_type(byte));
  }

 private:
  void writeOut() {
    require(replacement_.write({pbase(), pptr()}), name_, "written");
    setp(bytes_.data(), bytes_.data() + bytes_.size());
  }

  std::string name_;
  platform::Replacement replacement_;
  std::array<char, 1U << 16> bytes_{};
};

Output::Output(std::optional<std::string> file, std::vector<std::string> inputs)
    : file_(std::move(file)), inputs_(std::move(inputs)) {
  if (file_ == "-") file_.reset();
  if (!file_) return;
  refuseInputs();
  buffer_ = std::make_unique<FileBuffer>(*file_);
  stream_.rdbuf(buffer_.get());
  stream_.exceptions(std::ios::badbit);  // passes on what the buffer raises
}

Output::~Output() = default;

std::ostream& Output::stream() {
  if (file_) return stream_;
  return std::cout;
}

// The inputs once more: a map may have been made only now, under the same name.
void Output::finish() {
  if (!file_) return flushStandardOutput();
  refuseInputs();
  buffer_->finish();
}

void Output::refuseInputs() const {
  for (const std::string& input : inputs_) {
    if (input == *file_ || platform::isSameFile(*file_, input))
      throw Failure(*file_, "the output would take the place of what is read");
  }
}

void tellFailure(const std::string& reason) { std::cerr << "qbreport: " << shown(reason) << '\n'; }

void flushStandardOutput() {
  std::cout.flush();
  if (!std::cout) throw Failure("standard output cannot be written");
}

}  // namespace reader
