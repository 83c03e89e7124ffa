// How each command is written on the command line: its options, and the request that they make.
//
// One object per command adds its options to the parser's library and, when that command was given,
// finishes the request. Adding a command means writing one such class and naming it in
// MakeCommandUsages; its texts stand in HelpTexts.h.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "orxprint/CommandLine.h"

namespace orxprint {

// The options that most commands share. They may stand before or behind the command.
class CommonUsage {
public:
  // The object must outlive the parsing.
  void AddTo(CLI::App& command);
  // For a command that does not read documents itself.
  void AddTimeLimitTo(CLI::App& command, const char* description);
  // Throws CLI::ValidationError.
  [[nodiscard]] CommonOptions Finish() const;

private:
  CommonOptions options;
  std::string memoryLimit;
  std::string timeLimit;
};

class CommandUsage {
public:
  CommandUsage() = default;
  virtual ~CommandUsage() = default;
  CommandUsage(const CommandUsage&) = delete;
  CommandUsage& operator=(const CommandUsage&) = delete;

  // The command with its options; it keeps references to this object.
  virtual void AddTo(CLI::App& app, CommonUsage& common) = 0;
  [[nodiscard]] bool WasGiven() const { return command->parsed(); }
  // REQUIRES: it was given. Throws CLI::ParseError for what cannot be.
  virtual Request Finish(const CommonOptions& common) = 0;

protected:
  CLI::App& Add(CLI::App& app, const char* name, const char* description, const char* footer);
  // Of a command that takes documents, and the pages to look at.
  void AddPages(const char* description);
  void AddFiles(std::vector<std::string>& files, const char* description);
  // Of a command that works on any number of documents.
  void AddBatch(DocumentChoice& choice, unsigned& jobs, std::string& report,
                const char* description);
  // Throws CLI::ParseError.
  void FinishBatch(DocumentChoice& choice) const;

  CLI::App* command = nullptr;
  std::string pages;  // as written
  std::string shard;
};

// All commands, in the order of the help.
[[nodiscard]] std::vector<std::unique_ptr<CommandUsage>> MakeCommandUsages();
[[nodiscard]] std::unique_ptr<CommandUsage> MakeRenderUsage();

}  // namespace orxprint
