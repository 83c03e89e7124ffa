// A command's work on each of many documents, in processes of their own where the system has such,
// with the counts, the report and the line of progress that go with it.
//
// What is printed, written and reported does not depend on how many processes there are: answers
// are taken in the order of the documents, with the messages of each.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orxprint/BatchReport.h"
#include "orxprint/DocumentList.h"
#include "orxprint/Workers.h"

namespace orxprint {

struct DocumentAnswer {
  DocumentResult result;
  std::string text;  // for whoever takes the answer: what is to be printed, say
};

struct Batch {
  std::vector<ListedDocument> documents;
  // Documents that have to be done one after another, all of them in the order of their first;
  // without any, none have to.
  std::vector<Chain> chains;
  unsigned jobs = 0;  // documents at work at once, at most; 0: as many as there are cores

  // Perhaps in a process of its own. Must not throw.
  std::function<DocumentAnswer(std::size_t document)> work;
  // In the order of the documents; returns whether to go on.
  std::function<bool(const DocumentAnswer& answer)> take;
};

// Documents that will be at work at once.
[[nodiscard]] unsigned JobsOf(const Batch& batch);

// Does it all, adding what came of each document to the report. Throws Failure when no process can
// be had.
void DoBatch(const Batch& batch, BatchReport& report);

}  // namespace orxprint
