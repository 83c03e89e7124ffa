// What became of each document of a command that works on many: counted for the closing line, and
// kept as a line of JSON each for whoever puts the reports of several runs together.
//
// Nothing in it depends on the day or the machine, so equal runs give equal reports.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "orxprint/Descriptor.h"
#include "orxprint/Failure.h"

namespace orxprint {

struct DocumentResult {
  std::string file;
  Status status = Status::Done;
  bool isSkipped = false;  // it was up to date, or its outputs were to stay
  std::string problem;     // why it failed; may be empty
  std::vector<std::string> outputs;
  std::vector<std::string> losses;  // kinds that can be seen, the gravest first
};

class BatchReport {
public:
  // `verb` is what is done to each document: "drawn", "checked". A report is kept only if it is to
  // be written.
  BatchReport(std::string_view doneVerb, std::string reportFile)
      : verb(doneVerb), file(std::move(reportFile)) {}

  void Add(const DocumentResult& result);
  [[nodiscard]] std::size_t Count() const { return done + skipped + failed; }
  [[nodiscard]] std::size_t FailedCount() const { return failed; }
  // The gravest status of all.
  [[nodiscard]] Status Gravest() const { return gravest; }
  // Tells the closing line unless there was one document, or none is wanted.
  void TellSum(bool isWanted) const;
  // Writes the report, if there is one. Returns Gravest(), or that the report failed.
  [[nodiscard]] Status Write() const;

private:
  std::string_view verb;
  std::string file;
  std::string lines;
  Status gravest = Status::Done;
  Clock::time_point begin = Clock::now();
  std::size_t done = 0;
  std::size_t skipped = 0;
  std::size_t withLosses = 0;
  std::size_t failed = 0;
};

}  // namespace orxprint
