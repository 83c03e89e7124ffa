// What is told of an image to a watcher that wants notes: where it comes out other than its
// dictionary, its matrix or its filters ask for. Nothing here changes anything.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "graphics/Canvas.h"
#include "host/ORXHashDico.h"
#include "image/DecodeFilters.h"
#include "ps/Machine.h"

namespace orxeps {

// The first six elements of an array as numbers; nothing for anything else.
[[nodiscard]] std::optional<std::array<double, 6>> MatrixOf(const PSObject* object) noexcept;

// Tells how far from its place an image of this size is drawn. Drawing knows the usual image matrix
// [w 0 0 -h 0 h] and no rotation.
void NotePlacement(const Machine& machine, const Canvas& canvas,
                   const std::array<double, 6>& imageMatrix, double width, double height) noexcept;

// Tells how many of the bytes of the layout were there.
void NoteSampleCount(const Machine& machine, std::size_t there, std::size_t wanted) noexcept;

// Tells of what the dictionary of an image says and drawing leaves out. `filters` are those of its
// data source.
void NoteDescription(const Machine& machine, const ORXHashDico& entries,
                     std::span<void* const> filters, int bitsPerComponent);

}  // namespace orxeps
