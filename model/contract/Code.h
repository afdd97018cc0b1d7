#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace margindesk {

// What interning keeps of one text. Entries are never freed, so a code is a plain pointer.
struct TCodeEntry {
  std::string FText;
  const TCodeEntry* FFolded;  // the entry of the upper-cased (ASCII) text; itself when already upper case
  std::uint32_t FNumber;
};

// The entry of the empty text, number 0. It is there before any static object outside the host framework's
// library is initialised.
extern const TCodeEntry kEmptyCodeEntry;

// An interned text for what is compared and looked up all day: symbols, currencies, exchanges, accounts.
// Two codes are equal when their texts are, which costs one pointer compare. Codes live as long as the
// process; making one from text is thread-safe and costs a lookup, so typed text becomes a code once, at the
// edge.
class TCode {
 public:
  constexpr TCode() noexcept : FEntry(&kEmptyCodeEntry) {}
  explicit TCode(std::string_view text);

  const std::string& Text() const noexcept { return FEntry->FText; }
  // NOLINTNEXTLINE(google-explicit-constructor): a code reads as a text wherever one is wanted
  operator const std::string&() const noexcept { return FEntry->FText; }

  bool IsEmpty() const noexcept { return FEntry == &kEmptyCodeEntry; }

  // A small dense number, unique per text, 0 for the empty code: the index of a host table kept as an array.
  std::uint32_t Number() const noexcept { return FEntry->FNumber; }

  // Equality without regard to (ASCII) case.
  bool SameText(TCode other) const noexcept { return FEntry->FFolded == other.FEntry->FFolded; }

  friend bool operator==(TCode a, TCode b) noexcept { return a.FEntry == b.FEntry; }

 private:
  const TCodeEntry* FEntry;
};

// Orders codes by their texts, byte by byte: the order of every map keyed by account or symbol.
struct TCodeTextLess {
  bool operator()(TCode a, TCode b) const noexcept { return a.Text() < b.Text(); }
};

// How many numbers have been given out, the empty code's included.
std::uint32_t GetCodeCount() noexcept;

}  // namespace margindesk

template <>
struct std::hash<margindesk::TCode> {
  std::size_t operator()(margindesk::TCode code) const noexcept { return code.Number(); }
};
