// The hash table of dictionaries and the table of names.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>

#include "host/ORXHashDico.h"
#include "ps/NameTable.h"

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

TEST(NameTable, GivesEqualTextsOneString) {
  orxeps::NameTable names;
  std::map<std::string, ORXString> kept;
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 5'000; ++i) {
      const std::string text = "name" + std::to_string(i);
      const ORXString name = names.Intern(text);
      EXPECT_EQ(name.View(), text);
      const auto [place, isNew] = kept.try_emplace(text, name);
      EXPECT_EQ(place->second.View().data(), name.View().data());
      EXPECT_EQ(isNew, round == 0);
    }
  }
  EXPECT_EQ(names.Intern(std::string(100'000, 'x')).Length(), 100'000U);
  EXPECT_TRUE(names.Intern("").IsEmpty());
  const std::string withZero("a\0b", 3);
  EXPECT_EQ(names.Intern(withZero).View(), withZero);
}

}  // namespace
}  // namespace orxtests
