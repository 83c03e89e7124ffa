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

// How images land in the box that the transformation matrix gives them: as the usual image matrix
// [w 0 0 -h 0 h] says, or upright whatever the directions of the matrix are.
enum class ImageLanding { AsUsual, Upright };

// Tells how far from its place an image of this size is drawn. Drawing knows no rotation.
void NotePlacement(const Machine& machine, const Canvas& canvas, ImageLanding landing,
                   const std::array<double, 6>& imageMatrix, double width, double height) noexcept;

// Tells how many of the bytes of the layout were there.
void NoteSampleCount(const Machine& machine, std::size_t there, std::size_t wanted) noexcept;

// Tells of what the dictionary of an image says and drawing leaves out. `filters` are those of its
// data source.
void NoteDescription(const Machine& machine, const ORXHashDico& entries,
                     std::span<void* const> filters, int bitsPerComponent);

}  // namespace orxeps
