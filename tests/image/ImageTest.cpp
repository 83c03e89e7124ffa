// "image" and "colorimage": what is drawn, what is read, what stays on the stack.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/SampleData.h"
#include "tests/support/ScopedUnits.h"

namespace orxtests {
namespace {

using namespace std::string_literals;

// An image of a dictionary with these entries, its data in base 85, and a 7 behind the data.
std::string DictionaryImage(std::string_view entries, std::string_view data) {
  return "<< /BitsPerComponent 8 /DataSource currentfile /ASCII85Decode filter "s.append(entries) +
         " >> image\n" + Base85(data) + "7";
}

TEST(Image, ChoosesTheFormatFromDepthAndDecode) {
  const ScopedPoints points;
  const struct {
    const char* entries;
    std::string data;
    const char* expected;
  } kTable[] = {
      {"/Width 4 /Height 2", "abcdefgh", "4x2 format 0 at 0 0 pixels 2 2: 6162636465666768"},
      {"/Width 4 /Height 2 /Decode [0 1]", "abcdefgh",
       "4x2 format 0 at 0 0 pixels 2 2: 6162636465666768"},
      {"/Width 2 /Height 1 /Decode [0 1 0 1 0 1]", "abcdef",
       "2x1 format 2 at 0 0 pixels 4 4: 616263646566"},
      {"/Width 2 /Height 1 /Decode [ ]", "abcdef", "2x1 format 2 at 0 0 pixels 4 4: 616263646566"},
      {"/Width 10 /Height 2 /BitsPerComponent 1", "\x0f\x00\xff\x80"s,
       "10x2 format 4 at 0 0 pixels 0.8 2: f0ff007f"},
      // Short data is followed by zeros, after the inversion; longer data is cut.
      {"/Width 10 /Height 2 /BitsPerComponent 1", "\x0f\x00"s,
       "10x2 format 4 at 0 0 pixels 0.8 2: f0ff0000"},
      {"/Width 4 /Height 2", "abc", "4x2 format 0 at 0 0 pixels 2 2: 6162630000000000"},
      {"/Width 2 /Height 1", "abcdefgh", "2x1 format 0 at 0 0 pixels 4 4: 6162"},
      // Nothing to draw; the data is read all the same.
      {"/Width 4.0 /Height 2", "abcdefgh", ""},
      {"/Width -4 /Height 2", "abcdefgh", ""},
      {"/Height 2", "abcdefgh", ""},
      {"/Width 4 /Height 2 /BitsPerComponent 4", "abcdefgh", ""},
      {"/Width 4 /Height 2 /BitsPerComponent 8.0", "abcdefgh", ""},
      {"/Width 4 /Height 2", "", ""},
      {"/Width 2147483647 /Height 2147483647", "abcdefgh", ""},
  };
  for (const auto& [entries, data, expected] : kTable) {
    const std::string program = "8 4 scale " + DictionaryImage(entries, data);
    EXPECT_EQ(ImagesOf(program), expected) << entries;
    EXPECT_EQ(StackAfter(program), "7") << entries;
    // Without a generator as much is read.
    Interpretation counted(program);
    EXPECT_EQ(counted.Count(), "Image count = 1\n");
    EXPECT_EQ(counted.Stack(), "7") << entries;
  }
}

TEST(Image, IsPlacedByTheTransformationMatrixAlone) {
  const std::string image = DictionaryImage("/Width 2 /Height 1", "ab");
  EXPECT_EQ(ImagesOf("10 20 translate 72 144 scale " + image),
            "2x1 format 0 at 3.5277777 7.0555553 pixels 12.7 50.8: 6162");
  // A pixel size is rounded once, at its end; single-precision steps would give 0.07055556 here.
  EXPECT_EQ(ImagesOf("1 1 scale " + DictionaryImage("/Width 5 /Height 1", "abcde")),
            "5x1 format 0 at 0 0 pixels 0.07055555 0.35277778: 6162636465");
  EXPECT_EQ(ImagesOf("1 1 scale " + DictionaryImage("/Width 1 /Height 5", "abcde")),
            "1x5 format 0 at 0 0 pixels 0.35277778 0.07055555: 6162636465");
  const ScopedPoints points;
  EXPECT_EQ(ImagesOf("[-8 3 5 -4 10 20] concat " + image),
            "2x1 format 0 at 10 20 pixels -4 -4: 6162");
}

TEST(Image, ReadsThroughACopiedFileObject) {
  const ScopedPoints points;
  EXPECT_EQ(ImagesOf("<< /Width 2 /Height 1 /BitsPerComponent 8 /DataSource [currentfile] 0 array "
                     "copy 0 get /ASCII85Decode filter >> image\n" +
                     Base85("ab")),
            "2x1 format 0 at 0 0 pixels 0.5 1: 6162");
}

TEST(Image, DrawsNothingThroughFiltersThatFail) {
  const std::string head = "<< /Width 2 /Height 1 /BitsPerComponent 8 /DataSource currentfile ";
  for (const char* filters : {"", "/RunLengthDecode filter", "/CCITTFaxDecode filter"}) {
    // The first filter cannot read; the data is then part of the program.
    EXPECT_EQ(ImagesOf(head + filters + " >> image\n7 8"), "") << filters;
    EXPECT_EQ(StackAfter(head + filters + " >> image\n7 8"), "7 8") << filters;
  }
  for (const char* filters : {"/ASCII85Decode filter /CCITTFaxDecode filter",
                              "/ASCII85Decode filter /RunLengthDecode filter",
                              "/ASCII85Decode filter /ASCII85Decode filter"}) {
    const std::string program = head + filters + " >> image\n" + Base85("\x05xxxx") + "7 8";
    EXPECT_EQ(ImagesOf(program), "") << filters;
    EXPECT_EQ(StackAfter(program), "7 8") << filters;
  }
  ExpectOutcomes({
      {"4 2 8 matrix {1} image", "4 2 8 [1.0 0.0 0.0 1.0 0.0 0.0] {1}"},
      {"<< /DataSource 5 >> image", ""},
      {"<< >> image", ""},
  });
}

TEST(Image, PassesDataThroughAllFiltersInOrder) {
  const ScopedPoints points;
  EXPECT_EQ(ImagesOf("<< /Width 3 /Height 1 /BitsPerComponent 8 /DataSource currentfile "
                     "/ASCII85Decode filter /RunLengthDecode filter >> image\n" +
                     Base85(RunLength("abc"))),
            "3x1 format 0 at 0 0 pixels 0.33333334 1: 616263");
  EXPECT_EQ(ImagesOf("<< /Width 2 /Height 1 /BitsPerComponent 8 /DataSource currentfile "
                     "/ASCII85Decode filter /ASCII85Decode filter >> image\n" +
                     Base85(Base85("ab"))),
            "2x1 format 0 at 0 0 pixels 0.5 1: 6162");
}

constexpr const char* kSource = "{currentfile /ASCII85Decode filter /RunLengthDecode filter} ";

std::string Sources(int count) {
  std::string sources;
  for (int i = 0; i < count; ++i) sources += kSource;
  return sources;
}

std::string Rows(std::initializer_list<const char*> blocks) {
  std::string rows = " colorimage\n";
  for (const char* block : blocks) rows += Base85(RunLength(block));
  return rows + "7";
}

TEST(ColorImage, ReadsOneBlockPerSourceAndRow) {
  const ScopedPoints points;
  const struct {
    std::string program;
    const char* expected;
  } kTable[] = {
      {"2 2 8 matrix " + Sources(3) + "true 3" + Rows({"ab", "cd", "ef", "gh", "ij", "kl"}),
       "2x2 format 2 at 0 0 pixels 0.5 0.5: 61636562646667696b686a6c"},
      {"2 1 8 matrix " + Sources(4) + "true 4" + Rows({"ab", "cd", "ef", "gh"}),
       "2x1 format 3 at 0 0 pixels 0.5 1: 6163656762646668"},
      {"2 2 8 matrix " + Sources(1) + "false 1" + Rows({"ab", "cd"}),
       "2x2 format 0 at 0 0 pixels 0.5 0.5: 61626364"},
      {"2 2 8 matrix " + Sources(1) + "true 1" + Rows({"ab", "cd"}),
       "2x2 format 0 at 0 0 pixels 0.5 0.5: 61626364"},
      {"2 1 8 matrix " + Sources(1) + "false 3" + Rows({"abcdef"}),
       "2x1 format 2 at 0 0 pixels 0.5 1: 616263646566"},
      {"1 2 8 matrix " + Sources(1) + "false 4" + Rows({"abcd", "efgh"}),
       "1x2 format 3 at 0 0 pixels 1 0.5: 6162636465666768"},
      // Rows that are too long or too short stay within the image.
      {"2 2 8 matrix " + Sources(1) + "false 1" + Rows({"abcd", "efgh"}),
       "2x2 format 0 at 0 0 pixels 0.5 0.5: 61626364"},
      {"3 2 8 matrix " + Sources(1) + "false 1" + Rows({"ab", "cd"}),
       "3x2 format 0 at 0 0 pixels 0.33333334 0.5: 616263640000"},
      {"2 1 8 matrix " + Sources(3) + "true 3" + Rows({"a", "c", "ef"}),
       "2x1 format 2 at 0 0 pixels 0.5 1: 616365000066"},
      // Without a second filter blocks are read and dropped.
      {"2 1 8 matrix {currentfile /ASCII85Decode filter rstr readstring pop} false 1" +
           Rows({"ab"}),
       "2x1 format 0 at 0 0 pixels 0.5 1: 0000"},
      // No format fits; the rows are read.
      {"2 1 4 matrix " + Sources(1) + "false 1" + Rows({"ab"}), ""},
  };
  for (const auto& [program, expected] : kTable) {
    EXPECT_EQ(ImagesOf(program), expected) << program;
    EXPECT_EQ(StackAfter("9 " + program), "9 7") << program;
    Interpretation counted("9 " + program);
    EXPECT_EQ(counted.Count(), "") << program;
    EXPECT_EQ(counted.Stack(), "9 7") << program;
  }
}

TEST(ColorImage, IsMirroredWhereTheMatrixPointsBackwards) {
  const ScopedPoints points;
  const std::string image = "2 2 8 matrix " + Sources(1) + "false 1" + Rows({"ab", "cd"});
  EXPECT_EQ(ImagesOf("10 20 translate -4 8 scale " + image),
            "2x2 format 0 at 6 20 pixels 2 4: 62616463");
  EXPECT_EQ(ImagesOf("10 20 translate 4 -8 scale " + image),
            "2x2 format 0 at 10 12 pixels 2 4: 63646162");
  EXPECT_EQ(ImagesOf("10 20 translate -4 -8 scale " + image),
            "2x2 format 0 at 6 12 pixels 2 4: 64636261");
}

TEST(ColorImage, LeavesWhatItDidNotTakeWhenItFails) {
  ExpectOutcomes({
      {"1 2 3.0 colorimage", "1 2 3.0"},
      {"8 8 8 true 3 colorimage", ""},
      {"9 8 7 6 true false 5 colorimage", "9"},
      {"9 0 2 8 matrix " + Sources(1) + "false 1 colorimage", "9 0"},
      {"9 2 -2 8 matrix " + Sources(1) + "false 1 colorimage", "9 2"},
      {"9 8 2 1 8 matrix " + Sources(2) + "true 3 colorimage 7", "9 8 7"},
      {"9 2 1 8 matrix " + Sources(3) + "true 4 colorimage\n" + Base85("a") + Base85("b") +
           Base85("c") + "7",
       "7"},
      {"2 1 8 matrix {} false 1 colorimage 7", "7"},
      {"2 1 8 matrix {1 /ASCII85Decode} false 1 colorimage\nab~>7", "7"},
      {"2 2147483647 8 matrix " + Sources(1) + "false 1 colorimage\n", "2 !limitcheck"},
      {"2 1 8 matrix " + Sources(1) + "false 1 colorimage\n5 ab", ""},
  });
}

}  // namespace
}  // namespace orxtests
