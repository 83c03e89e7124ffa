// The questions about pages. A byte in front of the document is the all-pages flag (0, 1 or
// anything else), the next the selected page.
#include "fuzz/FuzzHost.h"
#include "plugin/ORXPrintEPSInterpreter.h"

namespace {

struct Answers {
  int countResult = 0;
  unsigned count = 0;
  int sizeResult = 0;
  float width = 0.0F;
  float height = 0.0F;
  int labelResult = 0;
  ORXUnicodeString label;

  friend bool operator==(const Answers&, const Answers&) = default;
};

Answers Ask(orxeps::ORXPrintEPSInterpreter& interpreter) {
  Answers answers;
  answers.countResult = interpreter.GetPageCount(&answers.count);
  answers.sizeResult = interpreter.GetPageSize(&answers.width, &answers.height);
  answers.labelResult = interpreter.GetPageLabel(answers.label);
  for (const int result : {answers.countResult, answers.sizeResult, answers.labelResult}) {
    orxfuzz::Require(result == 0 || result == 1, "a question answers 0 or 1");
  }
  return answers;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orxfuzz::InputBytes bytes({data, size});
  const auto allPages = static_cast<unsigned char>(bytes.Byte() & 3U);
  const unsigned page = bytes.Byte() & 15U;
  orxfuzz::FuzzHost host(bytes.Text());
  {
    orxeps::ORXPrintEPSInterpreter interpreter(&host.input);
    interpreter.SetAllPages(allPages);
    interpreter.SetCurrentPage(page);
    const Answers first = Ask(interpreter);
    orxfuzz::Require(first == Ask(interpreter), "the same question has the same answer");
    orxfuzz::Require(interpreter.heap.LiveCount() == 0, "a question makes no objects");
  }
  host.RequireNoViolations();
  return 0;
}
