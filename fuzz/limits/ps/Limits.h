// The interpreter's ceilings in the fuzz targets, in place of those of the product: so low that a
// run which reaches one is soon over, and that they are reached often.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orxeps {

inline constexpr std::size_t kMaxExecutionDepth = 1000;
inline constexpr std::int32_t kMaxOperands = 1000;
inline constexpr std::int32_t kMaxOpenDictionaries = 16;
inline constexpr std::int32_t kMaxArrayElements = 1000;
inline constexpr std::size_t kMaxClonedElements = 1000;
inline constexpr std::size_t kObjectCost = 32;
inline constexpr std::size_t kPartsCost = 64;
inline constexpr std::size_t kNameCost = 96;
inline constexpr std::size_t kOpenProcedureCost = 24;
inline constexpr std::size_t kSavedStateCost = 192;
inline constexpr std::size_t kPointCost = 24;
inline constexpr std::size_t kMaxBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMinPassBytes = std::size_t{1} << 18;
inline constexpr std::size_t kMaxTextBytes = 500;
inline constexpr std::size_t kMaxSavedStates = 16;
inline constexpr std::size_t kMaxPathPoints = 3000;
inline constexpr std::int32_t kMaxFilters = 4;
inline constexpr std::size_t kMaxImageBytes = std::size_t{1} << 18;
inline constexpr int kMaxAngleSteps = 1000;

}  // namespace orxeps
