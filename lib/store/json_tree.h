// The tree of one line of JSON.
//
// The JSON library's own tree looks for each name among those before it, which takes the square of
// their number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace store {

/// What a text says. The members of an object stand as in the text, also two of one name.
struct Member;
struct Json {
  using Array = std::vector<Json>;
  using Object = std::vector<Member>;

  std::variant<std::monostate, double, std::uint64_t, std::string, Array, Object> value;
};
struct Member {
  std::string name;
  Json value;
};

/// Makes the tree of what a JSON parser meets.
class TreeMaker {
 public:
  /// Whether all of the line is JSON.
  bool read(std::string_view line);

  Json& root() { return root_; }

  /// Whether the parser failed because a line of this length ends before its value does.
  bool endsEarly(std::size_t length) const { return !isWhole_ && failedAt_ > length; }

  // What the parser calls. All answer whether it shall go on.
  bool null() { return put(std::monostate()); }
  bool boolean(bool) { return put(std::monostate()); }
  bool number_integer(std::int64_t number) { return put(static_cast<double>(number)); }
  bool number_unsigned(std::uint64_t number) { return put(number); }
  bool number_float(double number, const std::string&) { return put(number); }
  bool string(const std::string& text) { return put(text); }
  template <typename Bytes>
  bool binary(const Bytes&) {
    return false;  // is in no text
  }
  bool start_object(std::size_t) {
    Json::Object members;
    if (depth_ == 1) members.reserve(12);  // the items of a note
    return open(std::move(members));
  }
  bool start_array(std::size_t) { return open(Json::Array()); }
  bool end_object() { return close(); }
  bool end_array() { return close(); }
  bool key(const std::string& name) {
    if (depth_ <= deepest) std::get<Json::Object>(open_.back()->value).emplace_back().name = name;
    return true;
  }
  template <typename Exception>
  bool parse_error(std::size_t position, const std::string&, const Exception& exception) {
    constexpr int syntaxError = 101;  // and not a number that is too large
    if (exception.id == syntaxError) failedAt_ = position;
    return false;
  }

 private:
  // No note has more levels, and what stands below them is not kept: a line may be nested without
  // end.
  static constexpr int deepest = 5;

  template <typename Content>
  bool put(Content content) {
    if (depth_ <= deepest) place().value = std::move(content);
    isWhole_ = depth_ == 0;
    return true;
  }

  template <typename Content>
  bool open(Content content) {
    if (++depth_ > deepest) return true;
    Json& opened = place();
    opened.value = std::move(content);
    open_.push_back(&opened);
    return true;
  }

  bool close() {
    if (depth_-- <= deepest) open_.pop_back();
    isWhole_ = depth_ == 0;
    return true;
  }

  // Where the next value comes to.
  Json& place() {
    if (open_.empty()) return root_;
    if (auto* object = std::get_if<Json::Object>(&open_.back()->value)) return object->back().value;
    return std::get<Json::Array>(open_.back()->value).emplace_back();
  }

  Json root_;
  std::vector<Json*> open_;  // from the outermost
  int depth_ = 0;
  bool isWhole_ = false;
  std::size_t failedAt_ = 0;
};

}  // namespace store
