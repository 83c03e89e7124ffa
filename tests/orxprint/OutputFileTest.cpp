// Outputs appear whole, under any name that the file system takes, or not at all.
#include "orxprint/OutputFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "orxprint/DocumentSource.h"
#include "orxprint/Failure.h"
#include "orxprint/Files.h"

namespace orxprint {
namespace {

namespace fs = std::filesystem;

// A folder of the test's own, which is gone afterwards.
class OutputFiles : public testing::Test {
protected:
  OutputFiles() { fs::create_directories(PathOf(folder)); }
  ~OutputFiles() override {
    std::error_code ignored;
    fs::remove_all(PathOf(folder), ignored);
  }

  [[nodiscard]] std::string In(const std::string& name) const { return folder + "/" + name; }
  static void Make(const std::string& name, const std::string& bytes) {
    OutputFile output(name);
    EXPECT_TRUE(output.Write(bytes));
    output.Close();
    output.Commit({});
  }
  static std::string ContentOf(const std::string& name) {
    RunControl control;
    DocumentSource source(name, control);
    std::string content(source.Size(), '\0');
    EXPECT_EQ(source.Read(0, content.data(), content.size()), source.Size());
    source.Require();
    return content;
  }
  [[nodiscard]] std::size_t FileCount() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(PathOf(folder)), fs::directory_iterator()));
  }

  std::string folder = testing::TempDir() + "orxprint-" +
                       testing::UnitTest::GetInstance()->current_test_info()->name();
};

TEST_F(OutputFiles, KeepTheirBytesUnderAnyName) {
  const std::string bytes("\r\n\x1A\0\n\xFF", 6);
  const std::string level(120, 'n');
  const std::string deep = level + "/" + level + "/" + level;
  fs::create_directories(PathOf(In(deep)));
  const std::vector<std::string> names = {
      "plain.svg", "\xD1\x87\xD0\xB5\xD1\x80\xD1\x82\xD1\x91\xD0\xB6 \xE2\x9C\x93.svg",
      deep + "/" + level + ".svg"};
  for (const std::string& name : names) {
    Make(In(name), bytes);
    EXPECT_EQ(ContentOf(In(name)), bytes) << name;
    Make(In(name), "shorter");  // takes the place of the one before
    EXPECT_EQ(ContentOf(In(name)), "shorter") << name;
  }
  EXPECT_EQ(FileCount(), 3U);
  // The library's own function for whole trees does not reach that deep everywhere.
  for (fs::path path(names.back()); !path.empty(); path = path.parent_path()) {
    EXPECT_TRUE(fs::remove(PathOf(In(path.string()))));
  }
}

TEST_F(OutputFiles, LeaveNothingBehindUnlessCommitted) {
  Make(In("a.svg"), "before");
  {
    OutputFile output(In("a.svg"));
    EXPECT_TRUE(output.Write(std::string(200'000, 'x')));
    output.Close();
    EXPECT_EQ(ContentOf(In("a.svg")), "before");
  }
  EXPECT_EQ(ContentOf(In("a.svg")), "before");
  EXPECT_EQ(FileCount(), 1U);
  EXPECT_THROW(OutputFile{folder}, Failure);
  EXPECT_THROW(OutputFile{In("none/a.svg")}, Failure);
}

TEST_F(OutputFiles, HaveOnePlaceUnderAllTheirNames) {
  Make(In("a.svg"), "x");
  EXPECT_TRUE(IdentityOf(In("a.svg")));
  EXPECT_EQ(IdentityOf(In("a.svg")), IdentityOf(In("./a.svg")));
  EXPECT_EQ(PlaceOf(In("a.svg")), PlaceOf(In("./a.svg")));
  EXPECT_NE(PlaceOf(In("a.svg")), PlaceOf(In("b.svg")));
  EXPECT_FALSE(IdentityOf(In("b.svg")));
  EXPECT_FALSE(PlaceOf(folder));
  EXPECT_FALSE(PlaceOf("-"));
#if defined(_WIN32)
  EXPECT_EQ(PlaceOf(In("new.svg")), PlaceOf(In("NEW.SVG")));
  EXPECT_EQ(PlaceOf(In("new.svg")), PlaceOf(In(".\\new.svg")));
#endif
}

}  // namespace
}  // namespace orxprint
