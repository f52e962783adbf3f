// Interning names in a string pool, against the map of the standard library, and reading a file by lines.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "utils/zvhelper.h"
#include "utils/zvstrhnd.h"
#include "utils/zvstrpoo.h"
#include "utils/zvtextfi.h"

namespace {

// Distinct names as they stand in files: words of 4 to 20 letters with a number.
std::vector<std::string> makeNames(int64_t count) {
  std::mt19937 random(1);
  std::vector<std::string> names;
  for (int64_t i = 0; i < count; ++i) {
    std::string name(4 + random() % 17, 'a');
    for (char& c : name) c = static_cast<char>('a' + random() % 26);
    names.push_back(name + std::to_string(i));
  }
  return names;
}

// A pool is sized by its owner for what it will hold.
ZVStringPool makePool(int64_t count, int caseSensitive) {
  auto size = static_cast<int32_t>(count);
  int32_t buckets = nextPrimeNumber(size);
  return ZVStringPool(buckets ? buckets : prevPrimeNumber(INT32_MAX), size, caseSensitive);
}

void poolUpdate(benchmark::State& state) {
  std::vector<std::string> names = makeNames(state.range(0));
  while (state.KeepRunning()) {
    ZVStringPool pool = makePool(state.range(0), 1);
    for (const std::string& name : names) benchmark::DoNotOptimize(pool.update(name.c_str()));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void mapInsert(benchmark::State& state) {
  std::vector<std::string> names = makeNames(state.range(0));
  while (state.KeepRunning()) {
    std::unordered_map<std::string, int> map;
    map.reserve(names.size());
    // Texts arrive as characters, as they do at a pool.
    for (const std::string& name : names) {
      benchmark::DoNotOptimize(map.emplace(name.c_str(), static_cast<int>(map.size())).first->second);
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <int caseSensitive>
void poolLookup(benchmark::State& state) {
  std::vector<std::string> names = makeNames(state.range(0));
  ZVStringPool pool = makePool(state.range(0), caseSensitive);
  for (const std::string& name : names) pool.update(name.c_str());
  while (state.KeepRunning()) {
    for (const std::string& name : names) benchmark::DoNotOptimize(pool.lookup(name.c_str()));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void mapLookup(benchmark::State& state) {
  std::vector<std::string> names = makeNames(state.range(0));
  std::unordered_map<std::string, int> map;
  for (const std::string& name : names) map.emplace(name, static_cast<int>(map.size()));
  while (state.KeepRunning()) {
    for (const std::string& name : names) {
      const char* text = name.c_str();
      benchmark::DoNotOptimize(map.find(text)->second);
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(poolUpdate)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK(mapInsert)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK(poolLookup<1>)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK(poolLookup<0>)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK(mapLookup)->Arg(100)->Arg(10000)->Arg(100000);

// A file of many lines, removed at the end.
class LineFile {
 public:
  explicit LineFile(int64_t lines) {
    std::ofstream stream(NAME, std::ios::binary);
    for (const std::string& name : makeNames(lines)) stream << "    name: \"" << name << "\"\r\n";
    size_ = stream.tellp();
  }
  LineFile(const LineFile&) = delete;
  LineFile& operator=(const LineFile&) = delete;
  ~LineFile() { std::remove(NAME); }

  static constexpr const char* NAME = "bench_strings.tmp";
  int64_t size() const { return size_; }

 private:
  int64_t size_ = 0;
};

void fileReadLine(benchmark::State& state) {
  LineFile lines(state.range(0));
  while (state.KeepRunning()) {
    ZVTextFile file;
    file.open(LineFile::NAME, ZV_FILE_READ);
    ZVStringHandle line;
    while (file.readLine(line) == ZV_FILE_OK) benchmark::DoNotOptimize(line.pString());
  }
  state.SetBytesProcessed(state.iterations() * lines.size());
}

void streamGetline(benchmark::State& state) {
  LineFile lines(state.range(0));
  while (state.KeepRunning()) {
    std::ifstream stream(LineFile::NAME, std::ios::binary);
    std::string line;
    while (std::getline(stream, line)) benchmark::DoNotOptimize(line.c_str());
  }
  state.SetBytesProcessed(state.iterations() * lines.size());
}

BENCHMARK(fileReadLine)->Arg(100000);
BENCHMARK(streamGetline)->Arg(100000);

}  // namespace
