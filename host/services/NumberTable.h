#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "model/contract/Code.h"

namespace margindesk {

// Host records by the number of their code: an array in blocks, so that a record never moves once it is made.
// Looking one up costs one compare and no hash.
template <class T>
class TNumberTable {
 public:
  // The record in a code's place, which may be one that was never filled in; null where there is no place
  // yet.
  T* Find(TCode code) const noexcept {
    const std::size_t number = code.Number();
    return number < FCount ? &FBlocks[number / kBlockSize][number % kBlockSize] : nullptr;
  }

  // The record in a code's place, which is made when there is none.
  T& Make(TCode code) {
    const std::size_t number = code.Number();
    while (number >= FCount) {
      FBlocks.push_back(std::make_unique<T[]>(kBlockSize));
      FCount += kBlockSize;
    }
    return *Find(code);
  }

 private:
  static constexpr std::size_t kBlockSize = 1024;

  std::vector<std::unique_ptr<T[]>> FBlocks;
  std::size_t FCount = 0;
};

// Codes in the order in which they were put in, each once.
class TCodeSet {
 public:
  bool Insert(TCode code) {  // false when it is there already
    const std::size_t number = code.Number();
    if (number >= FMarks.size()) FMarks.resize(number + 1);
    if (FMarks[number]) return false;
    FMarks[number] = true;
    FCodes.push_back(code);
    return true;
  }

  bool Contains(TCode code) const noexcept { return code.Number() < FMarks.size() && FMarks[code.Number()]; }
  bool IsEmpty() const noexcept { return FCodes.empty(); }
  const std::vector<TCode>& GetCodes() const noexcept { return FCodes; }

 private:
  std::vector<bool> FMarks;  // by number
  std::vector<TCode> FCodes;
};

}  // namespace margindesk
