#include "drawing/PngEncoder.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <exception>
#include <new>
#include <vector>

namespace orxdrawing {

namespace {

constexpr double kInchesPerMetre = 1 / 0.0254;
// Beyond this level drawings take twice the time for a tenth of the size.
constexpr int kCompressionLevel = 4;
// In drawings most pixels repeat their neighbour, and filters only hide that from the compressor.
// In photographs fewer than this share do.
constexpr double kLeastRepeats = 0.6;
constexpr std::size_t kPieceBytes = 64 << 10;

// What the file is written to, and what that threw.
struct Target {
  const ByteSink* sink = nullptr;
  std::exception_ptr failure;
};

void WritePiece(png_structp png, png_bytep data, png_size_t length) {
  auto* target = static_cast<Target*>(png_get_io_ptr(png));
  try {
    (*target->sink)({reinterpret_cast<const char*>(data), length});
  } catch (...) {
    target->failure = std::current_exception();
  }
  if (target->failure) png_error(png, "not taken");
}

void Flush(png_structp /*png*/) {}

void LeaveByError(png_structp png, png_const_charp /*text*/) { png_longjmp(png, 1); }

void IgnoreWarning(png_structp /*png*/, png_const_charp /*text*/) {}

// The structures of a file being written.
class File {
public:
  explicit File(Target& target)
      : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, LeaveByError, IgnoreWarning)) {
    if (png != nullptr) info = png_create_info_struct(png);
    if (info == nullptr) {
      png_destroy_write_struct(&png, nullptr);
      throw std::bad_alloc();
    }
    png_set_write_fn(png, &target, WritePiece, Flush);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { png_destroy_write_struct(&png, &info); }

  png_structp png = nullptr;
  png_infop info = nullptr;
};

// The rows of a canvas as the file has them.
class RowConverter {
public:
  explicit RowConverter(const PixelCanvas& convertedCanvas)
      : canvas(convertedCanvas), channels(canvas.HasOpacity() ? 4 : 3) {
    LookThrough();
    row.resize(static_cast<std::size_t>(canvas.Width()) * channels);
  }

  [[nodiscard]] int ColourType() const {
    const int base = isGrey ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB;
    return canvas.HasOpacity() ? base | PNG_COLOR_MASK_ALPHA : base;
  }
  [[nodiscard]] int Filters() const { return isPhoto ? PNG_ALL_FILTERS : PNG_FILTER_NONE; }
  // Valid until the next call.
  const std::uint8_t* Row(int y) {
    const std::span<const std::uint8_t> pixels = canvas.Row(y);
    if (!isGrey && channels == 3) return pixels.data();
    std::uint8_t* next = row.data();
    for (std::size_t i = 0; i < pixels.size(); i += channels) {
      const unsigned opacity = channels == 4 ? pixels[i + 3] : 255;
      *next++ = Divided(pixels[i], opacity);
      if (!isGrey) {
        *next++ = Divided(pixels[i + 1], opacity);
        *next++ = Divided(pixels[i + 2], opacity);
      }
      if (channels == 4) *next++ = pixels[i + 3];
    }
    return row.data();
  }

private:
  static std::uint8_t Divided(unsigned value, unsigned opacity) {
    if (opacity == 255 || opacity == 0) return static_cast<std::uint8_t>(value);
    return static_cast<std::uint8_t>(std::min(255U, (value * 255 + opacity / 2) / opacity));
  }
  void LookThrough() {
    std::size_t repeats = 0;
    unsigned differences = 0;
    for (int y = 0; y < canvas.Height(); ++y) {
      const std::span<const std::uint8_t> pixels = canvas.Row(y);
      const std::uint8_t* left = pixels.data();
      for (const std::uint8_t* pixel = left; pixel != pixels.data() + pixels.size();
           pixel += channels) {
        differences |= static_cast<unsigned>((pixel[0] ^ pixel[1]) | (pixel[0] ^ pixel[2]));
        repeats += static_cast<std::size_t>(pixel[0] == left[0] && pixel[1] == left[1]);
        left = pixel;
      }
    }
    isGrey = differences == 0;
    const double pixelCount = static_cast<double>(canvas.Width()) * canvas.Height();
    isPhoto = static_cast<double>(repeats) < pixelCount * kLeastRepeats;
  }

  const PixelCanvas& canvas;
  std::size_t channels;
  bool isGrey = false;
  bool isPhoto = false;
  std::vector<std::uint8_t> row;
};

png_uint_32 DotsPerMetre(double dotsPerInch) {
  const double dots = std::round(dotsPerInch * kInchesPerMetre);
  return dots >= 1 && dots <= PNG_UINT_31_MAX ? static_cast<png_uint_32>(dots) : 0;
}

// Returns whether all was written. libpng leaves this by a long jump when it was not, so nothing
// here may need destroying.
bool WriteAll(png_structp png, png_infop info, const PixelCanvas& canvas, RowConverter& rows,
              png_uint_32 dotsPerMetre) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
  png_set_compression_level(png, kCompressionLevel);
  png_set_compression_buffer_size(png, kPieceBytes);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, rows.Filters());
  png_set_IHDR(png, info, static_cast<png_uint_32>(canvas.Width()),
               static_cast<png_uint_32>(canvas.Height()), 8, rows.ColourType(), PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (dotsPerMetre > 0) {
    png_set_pHYs(png, info, dotsPerMetre, dotsPerMetre, PNG_RESOLUTION_METER);
  }
  png_write_info(png, info);
  for (int y = 0; y < canvas.Height(); ++y) png_write_row(png, rows.Row(y));
  png_write_end(png, nullptr);
  return true;
}

}  // namespace

void EncodePng(const PixelCanvas& canvas, double dotsPerInch, const ByteSink& sink) {
  Target target{&sink, nullptr};
  RowConverter rows(canvas);
  const File file(target);
  if (WriteAll(file.png, file.info, canvas, rows, DotsPerMetre(dotsPerInch))) return;
  if (target.failure) std::rethrow_exception(target.failure);
  throw std::bad_alloc();  // nothing else can fail
}

}  // namespace orxdrawing
