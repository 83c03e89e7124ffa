// A machine with the operators of the language and nothing else, and a program that it runs: no
// page, no generator, no files. What ps/ needs from elsewhere is missing here when it is linked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/InputStreams.h"
#include "ps/Machine.h"
#include "ps/Scanner.h"
#include "tests/support/Outcomes.h"

namespace orxtests {

class LanguageRun final : public orxeps::Machine, private orxeps::CommentListener {
public:
  // Bytes of the program; a newline is added behind them, so that the last token is complete.
  explicit LanguageRun(std::string_view program);
  // Exactly these bytes: for what happens at the very end of the data.
  [[nodiscard]] static LanguageRun OfExactly(std::string_view bytes) {
    return LanguageRun(ExactBytes{bytes});
  }
  // Expects that no object is left once the stacks are empty.
  ~LanguageRun();

  // Reads and executes the program, from its beginning each time.
  void Run();
  [[nodiscard]] std::string Stack() const { return ShowStack(operandStack); }

private:
  struct ExactBytes {
    std::string_view bytes;
  };
  explicit LanguageRun(ExactBytes exact);

  void CommentRead(std::string_view text) override { comments.emplace_back(text); }
  void RunNext();

  orxframework::MemoryInputStream stream;

public:
  orxeps::Scanner scanner{*this, &stream, *this};
  std::vector<std::string> comments;  // met so far
};

}  // namespace orxtests
