// What the person asked for: the options of every command as values, checked and complete.
//
// The commands take these and know nothing of how they are written on the command line, which is
// CommandUsage's. Everything is owned; formats are rows of a table that lasts as long as the
// program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "drawing/Comparison.h"
#include "drawing/PageAreas.h"
#include "drawing/TraceGenerator.h"
#include "orxprint/DocumentList.h"
#include "orxprint/Failure.h"
#include "orxprint/Formats.h"
#include "orxprint/PageList.h"
#include "orxprint/PlaceOption.h"

namespace orxprint {

// What the options take: dots per inch, documents at once, pixels each way, millimetres around a
// place.
inline constexpr std::uint32_t kLeastDotsPerInch = 1;
inline constexpr std::uint32_t kMostDotsPerInch = 9600;
inline constexpr std::uint32_t kMostJobs = 1024;
inline constexpr std::uint32_t kMostPixels = 1'000'000;
inline constexpr std::uint32_t kMostWithinMillimetres = 1'000'000;

using orxdrawing::Area;

// How long the work on one file may take.
struct TimeLimit {
  std::optional<double> seconds = 300;  // none: as long as it likes
  // Everything counts under a limit that was given, interpreting alone under the usual one.
  bool isGiven = false;

  [[nodiscard]] std::optional<double> Given() const { return isGiven ? seconds : std::nullopt; }
};

struct CommonOptions {
  std::string units;              // "mm" or empty, "pt", or "env": as the environment says
  std::string plugin;             // empty: the usual places
  std::uint64_t memoryLimit = 0;  // bytes; 0: what the machine has
  TimeLimit timeLimit;
};

// What is told of content that is lost.
enum class Telling { ErrorsOnly, OneWarning, All };

// Outputs that are there already.
enum class Existing { Replaced, KeptIfNewer, Kept };

struct RenderOptions {
  DocumentChoice documents;
  unsigned jobs = 0;  // documents at work at once; 0: as many as there are cores
  Existing existing = Existing::Replaced;
  std::string report;  // empty: none
  std::string output;  // empty: beside the input
  const Format* format = &DefaultFormat();
  PixelSettings pixels;
  std::optional<PageList> pages;  // none: all
  Area area = Area::Box;
  Telling telling = Telling::OneWarning;
  bool strict = false;
};

struct CheckOptions {
  DocumentChoice documents;
  unsigned jobs = 0;   // as for drawing
  std::string report;  // empty: none
  bool json = false;
  std::string html;               // empty: none
  std::optional<PageList> pages;  // none: all
};

struct InfoOptions {
  std::vector<std::string> files;
  bool json = false;
  bool quick = false;  // runs no PostScript
};

struct TraceOptions {
  std::vector<std::string> files;
  std::optional<std::uint32_t> page;  // any number; none: see pages
  std::optional<PageList> pages;      // none: all
  orxdrawing::TraceCallSet calls = orxdrawing::kAllTraceCalls;
  bool samples = false;
  bool where = false;
  bool summary = false;
  bool json = false;
};

struct FindOptions {
  std::string file;
  PlaceOption place;
  double withinMillimetres = 0.1;
  std::optional<PageList> pages;  // none: all
  bool json = false;
};

struct DiffOptions {
  std::string before;
  std::string after;
  std::string output;  // empty: no picture
  const Format* format = nullptr;
  double dotsPerInch = 150;
  double toleranceMillimetres = orxdrawing::kUsualTolerance;
  std::optional<PageList> pages;  // none: all
  bool json = false;
};

// Puts documents into the page for browsers.
struct ViewOptions {
  std::vector<std::string> files;
  std::string output;   // empty: a temporary file, which the desktop's browser opens
  bool noOpen = false;  // its name is printed instead
};

// Checks a build of the plug-in.
struct PluginOptions {
  std::string file;  // empty: as the common options say
  bool list = false;
  std::vector<std::string> only;  // names of checks; empty: all
  bool inThisProcess = false;     // for the one check that a child is to make
};

struct Request {
  CommonOptions common;
  std::variant<RenderOptions, CheckOptions, InfoOptions, TraceOptions, FindOptions, DiffOptions,
               ViewOptions, PluginOptions>
      command;
};

// The request, or the status to end with when help was given or the usage was wrong; the person
// has then been told.
// REQUIRES: the arguments are UTF-8, the program's name first.
std::variant<Request, Status> ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace orxprint
