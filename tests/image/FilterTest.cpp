// File objects and their filters, fax data, and "eexec".
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "image/DecodeFilters.h"
#include "tests/framework/G4Encoder.h"
#include "tests/support/OddStream.h"
#include "tests/support/SampleData.h"
#include "tests/support/ScopedUnits.h"
#include "tests/support/SilentGenerator.h"

namespace orxtests {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(Filters, AreAttachedToTheFileTheyAreGiven) {
  ExpectOutcomes({
      {"currentfile /ASCII85Decode filter", "file"},
      {"currentfile << /K -1 >> /CCITTFaxDecode filter", "file"},
      {"currentfile /Nope filter", "file"},
      {"currentfile /ascii85decode filter", "file"},
      {"currentfile (ASCII85Decode) filter", "file (ASCII85Decode)"},
      {"5 << /K -1 >> /CCITTFaxDecode filter", "5"},
      {"<< /K -1 >> /RunLengthDecode filter", ""},
  });
  std::string program = "currentfile ";
  for (int i = 0; i < 32; ++i) program += "/ASCII85Decode filter ";
  ExpectOutcomes({{program, "file"}, {program + "/ASCII85Decode filter", "file !limitcheck"}});
  Interpretation interpretation(
      "currentfile dup /ASCII85Decode filter /RunLengthDecode filter currentfile");
  static_cast<void>(interpretation.Draw());
  const orxeps::OperandStack& stack = interpretation.Get().operandStack;
  const ORXRawCollPV& attached = stack.Below(1)->Parts().fileFilters;
  ASSERT_EQ(attached.Count(), 2);
  EXPECT_EQ(attached.At(1), interpretation.Get().filters.ForName("ASCII85Decode"));
  EXPECT_EQ(attached.At(2), interpretation.Get().filters.ForName("RunLengthDecode"));
  EXPECT_EQ(stack.Below(1), stack.Below(2));
  EXPECT_EQ(stack.Below(0)->Parts().fileFilters.Count(), 0);
}

TEST(Filters, AreAttachedOnlyWhileTheStreamIsInItsNormalState) {
  for (const int state : {0, 7, -1}) {
    orxframework::MemoryInputStream bytes("currentfile /ASCII85Decode filter ");
    OddStream input(bytes, {.state = state});
    SilentGenerator generator;
    orxeps::ORXPrintEPSInterpreter interpreter(&input);
    EXPECT_EQ(interpreter.Generate(&generator), 1);
    ASSERT_EQ(ShowOutcome(interpreter), "file") << state;
    const orxeps::PSParts& file = interpreter.operandStack.Top()->Parts();
    EXPECT_EQ(file.fileFilters.Count(), state == 0 ? 1 : 0) << state;
  }
}

TEST(Filters, MoreThanThereCanBeDrawNothing) {
  const auto program = [](int filters) {
    std::string text = "<< /Width 1 /Height 1 /BitsPerComponent 8 /DataSource currentfile ";
    for (int i = 0; i < filters; ++i) text += "/ASCII85Decode filter ";
    return text + ">> image\n5sb~> 7";
  };
  EXPECT_NE(CallsOf(program(1)), "");
  EXPECT_EQ(CallsOf(program(orxeps::kMaxFilters + 1)), "");
  ExpectOutcomes({{program(orxeps::kMaxFilters + 1), "7 !limitcheck"}});
}

TEST(Filters, GiveFaxRowsOfWholeBytes) {
  const std::string twoWhiteRows = "11" + std::string(orxframework::ccitt::kEndOfBlockText);
  const std::vector<unsigned char> data = orxframework::ccitt::PackBits(twoWhiteRows);
  for (const int columns : {1, 7, 8, 9, 15, 16, 17, 1728}) {
    orxeps::MemoryBudget budget;
    orxeps::CCITTFaxDecodeFilter filter(budget);
    filter.parameters.k = -1;
    filter.parameters.columns = columns;
    filter.parameters.rows = 2;
    orxeps::ByteBuffer decoded;
    EXPECT_EQ(filter.Decode(data, decoded), orxeps::kFilterSuccess) << columns;
    EXPECT_EQ(decoded.Length(), 2 * ((static_cast<std::size_t>(columns) + 7) / 8)) << columns;
  }
}

TEST(Filters, KeepFaxParametersFromOneUseToTheNext) {
  Interpretation interpretation(
      "currentfile << /K -1 /Columns 600 /Rows 7.0 /BlackIs1 true /EndOfBlock 0 >> "
      "/CCITTFaxDecode filter\n"
      "5 << /Columns 99.0 /Rows 20 /BlackIs1 null /Uncompressed true /EndOfLine true "
      "/EncodedByteAlign true /DamagedRowsBeforeError 3 >> /CCITTFaxDecode filter\n"
      "currentfile /CCITTFaxDecode filter");
  static_cast<void>(interpretation.Draw());
  const auto* filter = dynamic_cast<orxeps::CCITTFaxDecodeFilter*>(
      interpretation.Get().filters.ForName("CCITTFaxDecode"));
  ASSERT_TRUE(filter);
  const orxeps::FaxParameters& parameters = filter->parameters;
  EXPECT_EQ(parameters.k, -1);
  EXPECT_EQ(parameters.columns, 600);
  EXPECT_EQ(parameters.rows, 20);
  EXPECT_EQ(parameters.blackIs1, 1);
  EXPECT_EQ(parameters.endOfBlock, 1);
  EXPECT_EQ(parameters.uncompressed + parameters.endOfLine + parameters.encodedByteAlign, 3);
  EXPECT_EQ(parameters.damagedRowsBeforeError, 3);
}

TEST(Filters, ReadBase85AcrossLinesUpToItsMarker) {
  const ScopedPoints points;
  const std::string head =
      "<< /Width 8 /Height 1 /BitsPerComponent 8 /DataSource currentfile /ASCII85Decode filter >> "
      "image ";
  const Outcome kTable[] = {
      {"@:E_WAS,Rg~>7 5", "6162636465666768"},
      {"@:\nE_\t WA\r\nS,v\xff\0w{}Rg~>7 5"sv, "6162636465666768"},
      {"z@:E_W~>7 5", "0000000061626364"},
      {"z@:E~>7 5", "0000000061620000"},
      // What is not data reads up to where it fails.
      {"@:E_WAS,Rg~ 7 5", ""},
      {"@z:E_W~>7 5", ""},
      {"@:E_W@~>7 5", ""},
      {"uuuuu~>7 5", ""},
      {"~>7 5", ""},
      {"@:E_W", ""},
  };
  for (const auto& [data, samples] : kTable) {
    const std::string program = head + std::string(data);
    const std::string expected =
        samples.empty() ? "" : "8x1 format 0 at 0 0 pixels 0.125 1: " + std::string(samples);
    EXPECT_EQ(ImagesOf(program), expected) << data;
    EXPECT_EQ(StackAfter(program), data.ends_with("7 5") ? "7 5" : "") << data;
  }
}

TEST(Filters, DecodeFaxDataBeneathBase85) {
  namespace ccitt = orxframework::ccitt;
  const ScopedPoints points;
  std::mt19937 random(3);
  ccitt::Page page(10, std::vector<bool>(17));
  std::string samples;
  for (std::vector<bool>& line : page) {
    // 1 is black in the image, which inverts the filter's 0; the pad bits that were 1 become 0.
    std::string bits;
    for (auto&& pixel : line) bits += (pixel = random() % 3 == 0) ? '1' : '0';
    samples += Text(ccitt::PackBits(bits));
  }
  ccitt::G4Encoder encoder([] { return false; });
  const std::string data =
      Text(ccitt::PackBits(encoder.Encode(page).append(ccitt::kEndOfBlockText)));
  const auto imageOf = [](std::string_view parameters, std::string_view faxData) {
    return ImagesOf(
        "<< /Width 17 /Height 10 /BitsPerComponent 1 /DataSource currentfile "
        "/ASCII85Decode filter << " +
        std::string(parameters) + " >> /CCITTFaxDecode filter >> image\n" + Base85(faxData));
  };
  std::string hexadecimal;
  for (const char byte : samples) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    hexadecimal += kDigits[static_cast<unsigned char>(byte) >> 4];
    hexadecimal += kDigits[static_cast<unsigned char>(byte) & 15];
  }
  const std::string expected = "17x10 format 4 at 0 0 pixels 0.05882353 0.1: " + hexadecimal;
  EXPECT_EQ(imageOf("/K -1 /Columns 17 /Rows 10", data), expected);
  EXPECT_EQ(imageOf("/K -1 /Columns 17 /Rows 10 /BlackIs1 true /EndOfBlock false", data), expected);
  EXPECT_EQ(imageOf("/Columns 17 /Rows 10", data), "") << "K is 0";
  EXPECT_EQ(imageOf("/K -1 /Columns 17", data), "") << "Rows is 0";
  EXPECT_EQ(imageOf("/K -1 /Columns -17 /Rows 10", data), "");
  EXPECT_EQ(imageOf("/K -1 /Columns 2147483647 /Rows 2147483647", data), "");
  EXPECT_EQ(imageOf("/K -1 /Columns 17 /Rows 10", data.substr(0, data.size() / 2)), "");
}

TEST(EExec, SkipsToTheEndOfTheLineThatCompletesCleartomark) {
  ExpectOutcomes({
      {"currentfile eexec\n0123abcd\n0000 cleartomark 1 2\n7", "file 7"},
      {"eexec x\rcleartomark 1\r7", "7"},
      {"eexec clear\r\ntom\r\n\r\nark 1\r\n7", "7"},
      {"eexec clearcleartomcleartomark 1\n7", "7"},
      {"eexec a\tcleartomarkb\n7", "7"},
      {"eexec\nclear\n\0tomark\n7"sv, "7"},
      {"eexec\nclear\0tomark\n7\ncleartomark\n8"sv, "8"},
      {"eexec clear tomark\n7", ""},
      {"eexec CLEARTOMARK\n7", ""},
      {"1 eexec", "1"},
      {"1 eexec cleartomark", "1"},
  });
}

}  // namespace
}  // namespace orxtests
