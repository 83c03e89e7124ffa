// Objects and the heap that they live on: references, copies, circles, depth.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "ps/Dictionaries.h"
#include "ps/NameTable.h"
#include "ps/ObjectHeap.h"
#include "tests/support/Interpretation.h"

namespace orxtests {
namespace {

using orxeps::LimitReached;
using orxeps::NameTable;
using orxeps::ObjectHeap;
using orxeps::PSObject;
using orxeps::PSObjectType;
using orxeps::PSRef;

PSRef MakeInteger(ObjectHeap& heap, std::int32_t value) {
  PSRef object = heap.Make(PSObjectType::Integer);
  object->intValue = value;
  return object;
}

template <typename... Elements>
PSRef MakeArray(ObjectHeap& heap, Elements... elements) {
  PSRef array = heap.Make(PSObjectType::Array);
  (array->OwnParts().arrayElements.Append(std::move(elements)), ...);
  return array;
}

PSObject* Element(const PSObject& array, std::int32_t position) {
  return array.Parts().arrayElements.At(position);
}

TEST(Objects, CloneCopiesElementsDeeplyAndSharesDictionaryValues) {
  ObjectHeap heap;
  NameTable names(heap);
  PSRef dictionary = heap.Make(PSObjectType::Dictionary);
  PSObject* value = MakeInteger(heap, 7).Leak();
  DictInsert(heap, *dictionary, names.Intern("value"), PSRef::Adopt(value));
  const PSRef array =
      MakeArray(heap, MakeArray(heap, MakeInteger(heap, 1)), PSRef::Retain(dictionary.Get()));
  const PSRef clone = array->Clone();
  const PSObject* inner = Element(*clone, 1);
  EXPECT_NE(inner, Element(*array, 1));
  EXPECT_NE(Element(*inner, 1), Element(*Element(*array, 1), 1));
  EXPECT_EQ(Element(*inner, 1)->intValue, 1);
  EXPECT_NE(Element(*clone, 2), dictionary.Get());
  EXPECT_EQ(orxeps::DictLocate(Element(*clone, 2)->Parts().dictEntries, "value"), value);
  EXPECT_EQ(value->refCount, 2U);
  EXPECT_EQ(clone->refCount, 1U);
}

TEST(Objects, AssignFromAppendsElementsAndReplacesTheDictionary) {
  ObjectHeap heap;
  NameTable names(heap);
  const PSRef three =
      MakeArray(heap, MakeInteger(heap, 1), MakeInteger(heap, 2), MakeInteger(heap, 3));
  const PSRef two = MakeArray(heap, MakeInteger(heap, 4), MakeInteger(heap, 5));
  const PSObject* kept = Element(*three, 3);
  three->AddRef();
  three->AssignFrom(*two);
  three->Release();
  EXPECT_EQ(three->refCount, 1U);
  ASSERT_EQ(three->Parts().arrayElements.Count(), 5);
  EXPECT_EQ(Element(*three, 3), kept);
  EXPECT_EQ(Element(*three, 5)->intValue, 5);
  EXPECT_NE(Element(*three, 5), Element(*two, 2));
  three->AssignFrom(*three);
  EXPECT_EQ(three->Parts().arrayElements.Count(), 10);
  EXPECT_EQ(Element(*three, 10)->intValue, 5);

  const PSRef source = heap.Make(PSObjectType::Dictionary);
  const PSRef target = heap.Make(PSObjectType::Dictionary);
  DictInsert(heap, *source, names.Intern("target"), PSRef::Retain(target.Get()));
  DictInsert(heap, *target, names.Intern("old"), MakeInteger(heap, 1));
  const std::size_t before = heap.LiveCount();
  target->AssignFrom(*source);
  EXPECT_EQ(heap.LiveCount(), before - 1) << "the value replaced is still alive";
  // Now the target holds itself, without a reference.
  EXPECT_EQ(orxeps::DictLocate(target->Parts().dictEntries, "target"), target.Get());
  EXPECT_EQ(target->refCount, 2U);
}

TEST(Objects, ADictionaryThatHoldsItselfHoldsNoReference) {
  ObjectHeap heap;
  NameTable names(heap);
  PSRef dictionary = heap.Make(PSObjectType::Dictionary);
  DictInsert(heap, *dictionary, names.Intern("self"), PSRef::Retain(dictionary.Get()));
  DictInsert(heap, *dictionary, names.Intern("self"), PSRef::Retain(dictionary.Get()));
  EXPECT_EQ(dictionary->refCount, 1U);
  DictInsert(heap, *dictionary, names.Intern("self"), MakeInteger(heap, 1));
  DictInsert(heap, *dictionary, names.Intern("self"), PSRef::Retain(dictionary.Get()));
  EXPECT_EQ(dictionary->refCount, 1U);
  EXPECT_EQ(heap.LiveCount(), 1U);
  EXPECT_FALSE(orxeps::DictRemove(heap, *dictionary, names.Intern("self")));
  EXPECT_EQ(dictionary->Parts().dictEntries.Count(), 0);
  DictInsert(heap, *dictionary, names.Intern("self"), PSRef::Retain(dictionary.Get()));
  // Another dictionary with the same entries counts it like any other value.
  const PSRef clone = dictionary->Clone();
  EXPECT_EQ(dictionary->refCount, 2U);
  dictionary = PSRef();
  EXPECT_EQ(heap.LiveCount(), 2U);
}

TEST(Objects, CopiesWithoutEndMeetTheirCeilingAndLeaveNothing) {
  ObjectHeap heap;
  NameTable names(heap);
  PSRef array = heap.Make(PSObjectType::Array);
  array->OwnParts().arrayElements.Append(PSRef::Retain(array.Get()));
  EXPECT_THROW(static_cast<void>(array->Clone()), LimitReached);
  EXPECT_THROW(array->AssignFrom(*array), LimitReached);
  EXPECT_EQ(heap.LiveCount(), 1U);
  EXPECT_EQ(array->Parts().arrayElements.Count(), 1);
}

}  // namespace
}  // namespace orxtests
