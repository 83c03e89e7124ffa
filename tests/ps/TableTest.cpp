// The hash table of dictionaries.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>

#include "host/ORXHashDico.h"

namespace orxtests {
namespace {

// Against an ordered map, with few keys, so that entries come and go in long runs of neighbours.
TEST(HashTable, AgreesWithAMapThroughInsertionsAndRemovals) {
  std::mt19937 random(7);
  int values[64] = {};
  for (const unsigned keyCount : {10U, 100U, 3000U}) {
    ORXHashDico table;
    std::map<std::string, void*> expected;
    for (int step = 0; step < 30'000; ++step) {
      const std::string key = "k" + std::to_string(random() % keyCount);
      void* value = &values[random() % 64];
      const auto found = expected.find(key);
      void* old = found == expected.end() ? nullptr : found->second;
      ASSERT_EQ(table.Locate(ORXString(key.c_str())), old);
      // Growing for a while, then shrinking.
      if (random() % 8 < (step / 5000 % 2 ? 3U : 5U)) {
        ASSERT_EQ(table.Insert(ORXUnicodeString(key.c_str()), value), old);
        expected[key] = value;
      } else {
        ASSERT_EQ(table.Remove(ORXUnicodeString(key.c_str())), old);
        expected.erase(key);
      }
      ASSERT_EQ(table.Count(), static_cast<std::int32_t>(expected.size()));
    }
    const ORXHashDico copy = table;
    table.RemoveAll();
    for (ORXHashCodeIter entry(copy); !entry.AtEnd(); entry.Next()) {
      const auto found = expected.find(entry.Key().ToUtf8());
      ASSERT_NE(found, expected.end());
      EXPECT_EQ(entry.Value(), found->second);
      expected.erase(found);
    }
    EXPECT_TRUE(expected.empty()) << "the iterator left values out";
  }
}

}  // namespace
}  // namespace orxtests
