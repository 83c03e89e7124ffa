// The small services: modules and factories, hashing, and the settings of a host.
#include "host/ORXSystem.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "framework/PropertiesControl.h"
#include "host/ORXOMModule.h"
#include "host/ORXTextHash.h"

namespace orxframework {
namespace {

void* MakeFirst(void* argument) { return argument; }
void* MakeSecond(void*) { return nullptr; }

TEST(Modules, ConstructingOneRegistersItsClasses) {
  constexpr ORXOMRegistrationFunction kTable[] = {
      nullptr,
      [] {
        ORXFillDictionary::Register("TestClass", MakeFirst);
        return static_cast<ORXOMModule*>(nullptr);
      },
      nullptr,
  };
  EXPECT_EQ(ORXFillDictionary::Find("TestClass"), nullptr);
  const ORXOMModule module({std::begin(kTable), std::end(kTable)});
  EXPECT_EQ(ORXFillDictionary::Find("TestClass"), &MakeFirst);
  EXPECT_EQ(ORXFillDictionary::Find("TestClas"), nullptr);
  ORXFillDictionary::Register("TestClass", MakeSecond);
  EXPECT_EQ(ORXFillDictionary::Find("TestClass"), &MakeSecond);
}

// Two copies of one library, loaded and unloaded in either order.
TEST(Modules, GoingTakesTheirOwnRegistrationsBack) {
  constexpr ORXOMRegistrationFunction kFirstTable[] = {[] {
    ORXFillDictionary::Register("TestCopies", MakeFirst);
    return static_cast<ORXOMModule*>(nullptr);
  }};
  constexpr ORXOMRegistrationFunction kSecondTable[] = {[] {
    ORXFillDictionary::Register("TestCopies", MakeSecond);
    return static_cast<ORXOMModule*>(nullptr);
  }};
  const ORXOMModuleInfo firstInfo{std::begin(kFirstTable), std::end(kFirstTable)};
  const ORXOMModuleInfo secondInfo{std::begin(kSecondTable), std::end(kSecondTable)};
  const auto find = [] { return ORXFillDictionary::Find("TestCopies"); };

  auto first = std::make_unique<ORXOMModule>(firstInfo);
  auto second = std::make_unique<ORXOMModule>(secondInfo);
  EXPECT_EQ(find(), &MakeSecond);
  second.reset();
  EXPECT_EQ(find(), &MakeFirst);
  second = std::make_unique<ORXOMModule>(secondInfo);
  first.reset();
  EXPECT_EQ(find(), &MakeSecond);
  second.reset();
  EXPECT_EQ(find(), nullptr);
}

// All texts that a scanner may meet in quantity: numbered names, and long ones of which little
// differs. Collisions of the hash, and of its low bits that choose a slot, must be no more than
// chance makes them.
TEST(System, HashesOfSimilarTextsSpread) {
  std::vector<std::string> texts;
  for (int i = 0; i < 20'000; ++i) texts.push_back(std::string("F").append(std::to_string(i)));
  for (std::size_t i = 0; i < 2'000; ++i) {
    texts.emplace_back(2'000, 'x').at(i) = 'y';
    texts.emplace_back(i + 20, '\0');
  }
  std::set<std::uint32_t> hashes;
  std::vector<unsigned> slots(4096);
  for (const std::string& text : texts) {
    const std::uint32_t hash = ORXHashText(text.data(), text.size());
    EXPECT_EQ(ORXHashText(std::string(text).data(), text.size()), hash);
    hashes.insert(hash);
    ++slots[hash % slots.size()];
  }
  EXPECT_GE(hashes.size(), texts.size() - 5);
  unsigned emptySlots = 0;
  for (const unsigned count : slots) {
    EXPECT_LT(count, 30U);
    emptySlots += count == 0 ? 1 : 0;
  }
  EXPECT_LT(emptySlots, 60U);  // chance leaves about twelve of them empty
}

TEST(Properties, AnswerWhatTheHostHasSetUntilTheScopeEnds) {
  std::vector<std::string> report;
  {
    const ScopedProperties scope;
    PropertiesControl::SetOnErrorAction(OnErrorAction::Stop);
    PropertiesControl::SetMemoryGauge([](float threshold) { return threshold > 0.5F ? 7 : 0; });
    PropertiesControl::SetReportSink([&report](PrintInfoType type, const ORXUnicodeString& text) {
      report.push_back(std::to_string(static_cast<int>(type)) + " " + text.ToUtf8());
    });
    EXPECT_EQ(ORXPrintPropertiesManager::GetOnErrorAction(), OnErrorAction::Stop);
    EXPECT_EQ(ORXPrintPropertiesManager::IsLowMemory(0.9F), 7);
    EXPECT_EQ(ORXPrintPropertiesManager::IsLowMemory(0.1F), 0);
    ORXPrintPropertiesManager::AddInfo(PrintInfoType::Error, "one");
  }
  EXPECT_EQ(ORXPrintPropertiesManager::GetOnErrorAction(), OnErrorAction::GoOn);
  EXPECT_EQ(ORXPrintPropertiesManager::IsLowMemory(0.9F), 0);
  ORXPrintPropertiesManager::AddInfo(PrintInfoType::Error, "two");
  EXPECT_EQ(report, std::vector<std::string>{"2 one"});
}

}  // namespace
}  // namespace orxframework
