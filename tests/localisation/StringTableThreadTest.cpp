#include <gtest/gtest.h>
#include <lqtools/localisation/LqStringTableFile.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "localisation/StringTableTestSupport.h"
#include "support/TempFolder.h"

namespace {

std::string TextOf(char language, unsigned id) {
  // Long enough that a torn read would show.
  return std::string(1, language) + "-" + std::to_string(id) + std::string(200 + id % 50, language);
}

std::string Table(char language, unsigned count) {
  std::vector<std::pair<unsigned, std::string>> texts;
  for (unsigned id = 0; id < count; ++id)
    texts.emplace_back(id, TextOf(language, id));
  return WrittenTable(texts);
}

TEST(StringTableThreads, LookupsDuringSetFileGiveWholeTextsOrTheFallback) {
  constexpr unsigned kIds = 400;
  TempFolder folder;
  folder.Write("a.lqs", Table('a', kIds));
  folder.Write("b.lqs", Table('b', kIds));
  const std::string a = folder.Path("a.lqs");
  const std::string b = folder.Path("b.lqs");
  const std::string missing = folder.Path("missing.lqs");

  LqStringTableFile table;
  ASSERT_TRUE(table.SetFile(a.c_str(), nullptr));
  std::atomic<bool> stop{false};
  std::atomic<int> bad{0};
  std::atomic<int> found{0};

  std::vector<std::thread> readers;
  for (unsigned t = 0; t < 3; ++t) {
    readers.emplace_back([&, t] {
      unsigned id = t * 131;
      for (int i = 0; i < 3000 || !stop.load(); ++i) {
        id = (id * 1103515245u + 12345u) % kIds;
        LqString text;
        const bool ok = table.LoadStringW(text, id);
        const std::string got(text, static_cast<std::size_t>(text.Length()));
        LqString fallback;
        StringId2String(id, fallback);
        const bool whole =
            ok ? (got == TextOf('a', id) || got == TextOf('b', id)) : got == std::string(fallback);
        if (!whole) bad.fetch_add(1);
        if (ok) found.fetch_add(1);
        if (i > 20000) break;
      }
    });
  }
  for (int round = 0; round < 150; ++round) {
    const std::string& next = round % 3 == 0 ? a : (round % 3 == 1 ? b : missing);
    table.SetFile(next.c_str(), round % 2 ? b.c_str() : nullptr);
    std::this_thread::yield();
  }
  stop.store(true);
  for (std::thread& reader : readers)
    reader.join();
  EXPECT_EQ(bad.load(), 0);
  EXPECT_GT(found.load(), 0);
}

}  // namespace
