// The values of options: what people write becomes what the commands take.
//
// Each function refuses what it cannot take by throwing CLI::ValidationError with the option, the
// text as it was written and what is expected; nothing is kept.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "orxprint/CommandLine.h"

namespace orxprint {

[[noreturn]] void Refuse(const std::string& option, const std::string& text,
                         const std::string& expected);

// A check, for CLI::Option::check, that takes numbers from the one to the other and nothing else.
[[nodiscard]] std::function<std::string(const std::string&)> NumberFrom(std::uint32_t least,
                                                                        std::uint32_t most);

// An empty value is a variable of a script that was never set.
void RefuseEmptyValues(const CLI::App& command);
void RequireOneStandardInput(const std::vector<std::string>& files);

// Bytes with an optional K, M or G, each 1024 times the one before.
[[nodiscard]] std::uint64_t ParseSize(const std::string& text);
[[nodiscard]] TimeLimit ParseTimeLimit(const std::string& text);
// None for the empty text: all pages.
[[nodiscard]] std::optional<PageList> ParsePages(const std::string& text);
[[nodiscard]] Area ParseArea(const std::string& text);
// Without names, all calls.
[[nodiscard]] orxdrawing::TraceCallSet ParseCalls(const std::vector<std::string>& names);
// WIDTHxHEIGHT in pixels.
[[nodiscard]] PixelBounds ParseFit(const std::string& text);
// NUMBER/COUNT, from 1/1.
[[nodiscard]] Shard ParseShard(const std::string& text);
// "none", "white" or "#rrggbb"; none is transparent.
[[nodiscard]] std::optional<orxdrawing::Colour> ParseBackground(const std::string& text);

}  // namespace orxprint
