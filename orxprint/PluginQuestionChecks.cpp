// What a build of the plug-in answers about pages, and that asking changes nothing.
#include "orxprint/PluginCandidate.h"
#include "orxprint/PluginChecks.h"

namespace orxprint {

namespace {

// The answers to all questions as text, with results that begin with 0.
std::string AnswersOf(const Host& host, unsigned char allPages, unsigned page) {
  host->SetAllPages(allPages);
  host->SetCurrentPage(page);
  float width = 0.0F;
  float height = 0.0F;
  unsigned count = 0;
  ORXUnicodeString label;
  const int hasSize = host->GetPageSize(&width, &height);
  const int hasCount = host->GetPageCount(&count);
  const int hasLabel = host->GetPageLabel(label);
  host.RequireKept();
  char text[200];
  std::snprintf(text, sizeof text, "size %d %.1f %.1f, count %d %u, label %d", hasSize,
                static_cast<double>(width), static_cast<double>(height), hasCount, count, hasLabel);
  return text + std::string(" ") + label.ToUtf8();
}

void RequireAnswers(const std::string& answers, const std::string& expected) {
  Require(answers == expected, "answers \"" + answers + "\" and not \"" + expected + "\"");
}

std::string AnswersQuestions(const std::filesystem::path& file) {
  const Candidate candidate(file);
  struct Question {
    std::string_view document;
    unsigned char allPages;
    unsigned page;
    std::string answers;
  };
  const Question questions[] = {
      {kPages, 1, 1, "size 1 101.6 101.6, count 1 2, label 1 cover"},
      {kPages, 0, 1, "size 1 25.4 50.8, count 1 2, label 1 cover"},
      {kPages, 0, 2, "size 1 50.8 25.4, count 1 2, label 1 back"},
      {kPages, 9, 2, "size 0 0.0 0.0, count 1 2, label 1 back"},
      {kShapes, 1, 1, "size 1 25.4 50.8, count 0 0, label 0 "},
      {kShapes, 0, 5, "size 1 25.4 50.8, count 0 0, label 0 "},
      {"%!PS\n", 1, 1, "size 0 0.0 0.0, count 0 0, label 0 "},
  };
  for (const Question& question : questions) {
    const Host host(candidate, question.document);
    RequireAnswers(AnswersOf(host, question.allPages, question.page), question.answers);
  }
  return {};
}

std::string KeepsWhatIsNotStated(const std::filesystem::path& file) {
  const Candidate candidate(file);
  const Host host(candidate, "%!PS\n1 1 lineto\n");
  float width = 3.0F;
  float height = 4.0F;
  unsigned count = 5;
  ORXUnicodeString label("mine");
  RequireEqual(host->GetPageSize(&width, &height), 1, "GetPageSize answers");
  RequireEqual(host->GetPageCount(&count), 0, "GetPageCount answers");
  RequireEqual(host->GetPageLabel(label), 0, "GetPageLabel answers");
  Require(width == 3.0F && height == 4.0F && count == 5 && label == ORXUnicodeString("mine"),
          "a result that the document says nothing about is changed");
  return {};
}

std::string AsksBetweenPasses(const std::filesystem::path& file) {
  const Candidate candidate(file);
  for (const std::string_view document : {kPages, kShapes, kImage}) {
    Host undisturbed(candidate, document);
    const std::string calls = undisturbed.Draw();
    const std::string lines = undisturbed.Count();
    Host host(candidate, document);
    const std::string answers = AnswersOf(host, 1, 1);
    RequireSameCalls(host.Draw(), calls);
    RequireAnswers(AnswersOf(host, 1, 1), answers);
    Require(host.Count() == lines, "a question changes what the next pass counts");
    RequireAnswers(AnswersOf(host, 1, 1), answers);
  }
  return {};
}

std::string KeepsBaseAnswers(const std::filesystem::path& file) {
  const Candidate candidate(file);
  const Host host(candidate, kPages);
  float bounds[4] = {1, 2, 3, 4};
  unsigned version = 0;
  RequireEqual(host->GetBounds(bounds[0], bounds[1], bounds[2], bounds[3]), 0, "GetBounds answers");
  RequireEqual(host->GetVersion(version), 1, "GetVersion answers");
  RequireEqual(host->Interpret(nullptr), 0, "Interpret answers");
  RequireEqual(host->GetTransformations(nullptr), 0, "GetTransformations answers");
  RequireEqual(host->SetTransformations(nullptr), 0, "SetTransformations answers");
  return {};
}

constexpr PluginCheck kChecks[] = {
    {"questions", "page count, sizes and labels are those of the structure comments",
     &AnswersQuestions},
    {"not-stated", "results that the document says nothing about keep their value",
     &KeepsWhatIsNotStated},
    {"between", "questions between passes change nothing and find nothing changed",
     &AsksBetweenPasses},
    {"base", "the framework's own operations answer as its base class does", &KeepsBaseAnswers},
};

}  // namespace

std::span<const PluginCheck> QuestionChecks() { return kChecks; }

}  // namespace orxprint
