// Values that may stand in the texts of failures and messages.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "report/pseudonyms.h"

namespace reader {

/// It leans on the pseudonyms, which outlive it and stay as they are.
class KnownValues {
 public:
  explicit KnownValues(const std::deque<Pseudonym>& pseudonyms);

  KnownValues(const KnownValues&) = delete;
  KnownValues& operator=(const KnownValues&) = delete;
  ~KnownValues() = default;

  using Take = std::function<void(std::string_view, const Pseudonym&)>;

  /// Hands out, in order, the values that stand in `message`: words of their own, in whatever case,
  /// none of them over another, the longest first. The tool writes paths as UTF-8 of their bytes,
  /// as if those were Latin-1: a value in this doubled form counts too.
  void forEachIn(std::string_view message, const Take& take) const;

 private:
  struct Form {
    std::string_view value;
    std::string_view text;  // the value in small letters
    const Pseudonym* pseudonym = nullptr;
    const Form* shorter = nullptr;  // the longest of those that it begins with
  };
  struct Range {
    std::size_t begin;
    std::size_t count;
  };
  struct Hit {
    std::size_t at;
    const Form* form;

    std::size_t size() const { return form->text.size(); }
    std::size_t end() const { return at + size(); }
  };

  void addForms(const std::deque<Pseudonym>& pseudonyms);
  void lowerForms();
  void sortForms();
  void linkForms();
  const Form* longestIn(std::string_view text, std::size_t at, std::size_t most) const;
  std::vector<Hit> hitsIn(std::string_view text) const;
  std::vector<Hit> longestOf(std::vector<Hit> hits, std::string_view text) const;
  const Pseudonym& pseudonymOf(const Form& form, std::string_view value) const;

  std::deque<std::string> doubled_{};
  std::string small_{};  // the texts of the forms
  // Sorted, so that the forms that a text begins with are the last one that is not behind it in
  // this order, or among its shorter ones. Of values that differ in case alone the earliest.
  std::vector<Form> forms_{};
  std::unordered_map<std::string_view, const Pseudonym*> others_{};  // the later ones of those
  std::unordered_map<std::uint32_t, Range> ranges_{};                // of forms, by the beginning
};

}  // namespace reader
