// Every ceiling of the interpreter, each far above what real documents need.
//
// Meeting one raises the standard PostScript error named beside it. "Fails" means that the operator
// raises the error and takes no effect beyond consuming operands; "abandons" means that the run is
// given up as well, back to the main loop, which goes on with the next object of the input.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orxeps {

// Procedures, "exec", "if" and "ifelse" running inside each other. Abandons: execstackoverflow.
inline constexpr std::size_t kMaxExecutionDepth = std::size_t{1} << 20;
// Entries of the operand stack. Abandons: stackoverflow.
inline constexpr std::int32_t kMaxOperands = std::int32_t{1} << 20;
// Dictionaries opened with "begin" and not ended, in one pass. Fails: dictstackoverflow.
inline constexpr std::int32_t kMaxOpenDictionaries = 1024;
// Elements of one new array. Fails: limitcheck.
inline constexpr std::int32_t kMaxArrayElements = std::int32_t{1} << 20;
// Objects that a copy of one object may make for what is nested in it. Abandons: limitcheck.
inline constexpr std::size_t kMaxClonedElements = std::size_t{1} << 20;
// What objects, their parts and names cost of the budget, the same on every platform: a record, the
// parts that hang on it (texts, elements and entries are counted on top), a name without its text.
inline constexpr std::size_t kObjectCost = 32;
inline constexpr std::size_t kPartsCost = 64;
inline constexpr std::size_t kNameCost = 96;
// Bytes of all live objects with their parts and names. Abandons: VMerror.
inline constexpr std::size_t kMaxBytes = std::size_t{384} << 20;
// Bytes of them that a pass may always add to what earlier passes of the interpreter left alive.
inline constexpr std::size_t kMinPassBytes = std::size_t{4} << 20;
// Bytes of one token, string or comment. What comes behind them is read and lost: limitcheck.
inline constexpr std::size_t kMaxTextBytes = std::size_t{16} << 20;
// Graphics states saved and not restored. Fails: limitcheck.
inline constexpr std::size_t kMaxSavedStates = std::size_t{1} << 18;
// Points of the current path and all saved ones. Fails: limitcheck.
inline constexpr std::size_t kMaxPathPoints = std::size_t{1} << 23;
// Filters attached to one file object. Fails: limitcheck.
inline constexpr std::int32_t kMaxFilters = 32;
// Bytes of the samples of one image, encoded or decoded. Fails: limitcheck.
inline constexpr std::size_t kMaxImageBytes = std::size_t{512} << 20;
// Steps of 360 degrees by which the angles of an arc are brought in order one at a time; angles
// farther apart are brought in order at once.
inline constexpr int kMaxAngleSteps = 100'000;

}  // namespace orxeps
