// Runs a fuzz target over the files of a folder, and over each of them cut short, doubled and grown large.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kLarge = 10'000'000;  // bytes

void Run(const std::string& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  int seeds = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string seed{std::istreambuf_iterator<char>(file), {}};
      Run(seed);
      Run(seed.substr(0, seed.size() / 2));
      Run(seed + seed);
      ++seeds;
    }
  }
  std::string large = "DefaultColumn=";
  while (large.size() < kLarge) large += "Equity,1,80;";
  Run(large);
  Run("\"" + large + "\"");
  Run(std::string(kLarge, '['));
  std::printf("%d seeds\n", seeds);
  return seeds == 0 ? 1 : 0;
}
