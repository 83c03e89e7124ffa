// What an interpreter tells a watcher that wants notes: where it does less, or other, than a
// PostScript interpreter would, and what lies on its stacks and in its graphics state meanwhile.
//
// Nothing here owns anything. Texts are valid during the call only.
#pragma once

#include <cstdint>
#include <string_view>

enum class ORXNoteKind : std::uint32_t {
  UnknownName,       // a name that means nothing was executed; its operands are still there
  Error,             // an error was raised; `detail` is its name
  Ignored,           // an operator is about to take its operands and do nothing else
  ChangedForAll,     // "neg" or "round" changed a number that somebody else holds, too
  ChangedConstant,   // the same of a number that the running procedure holds
  ComparedAsFalse,   // "lt" of two reals of which the first is less
  IntegerMatrix,     // a matrix with integers, or with elements that are no numbers, was read
  DevicePoint,       // "currentpoint" answered other numbers than those of user space
  OutputWidth,       // "currentlinewidth" answered in output units
  Hairline,          // "setlinewidth" of nothing: the width is now the default
  TextAfterAngle,    // the token behind "<" or ">" was dropped; `detail` is that token
  CharactersLost,    // a string lost the delimiters in it
  FilterUnknown,     // "filter" has no filter of the name in `detail`
  ImageSkipped,      // nothing is drawn of an image; `detail` says why
  ImageUndecodable,  // nothing could be decoded
  SamplesMissing,    // `value` is the share of an image's bytes that were there
  SamplesLeft,       // `value` is how many times too many bytes there were
  ImageMisplaced,    // an image lands elsewhere, by `value` times its size
  ImageNegative,     // dark and light are exchanged
  ImageColors,       // the components are not those of the samples, or not in their range
  FaxParameter,      // a parameter of the fax filter that does not count; `detail` is its name
  PageBegun,         // a page comment, which stands at Place(); `detail` are its name's letters
};

struct ORXNote {
  ORXNoteKind kind = ORXNoteKind::UnknownName;
  std::string_view name;    // of the operator that runs, or the unknown name
  std::string_view detail;  // see the kinds
  double value = 0;         // see the kinds
};

enum class ORXOperandType : std::uint32_t {
  Other,
  Number,
  Boolean,
  Text,
  Name,
  Array,
  Procedure,
  Dictionary,
};

struct ORXOperand {
  ORXOperandType type = ORXOperandType::Other;
  double number = 0;            // of a Number; 0 or 1 of a Boolean
  std::string_view text;        // of a Text or Name
  std::int32_t count = 0;       // elements of an Array or Procedure, entries of a Dictionary
  std::uintptr_t identity = 0;  // the same for holders of one object
};

// The current graphics state. Points and extents are in device space, PostScript points before the
// unit scale.
struct ORXGraphics {
  double matrix[6] = {1, 0, 0, 1, 0, 0};
  float red = 0;
  float green = 0;
  float blue = 0;
  float lineWidth = 0;  // as kept: in output units
  float unitScale = 1;  // from device space to output units
  std::uint32_t mark = 0;
  std::uint64_t pathPoints = 0;
};

// A question about the names that a procedure may come to run.
class ORXNameTest {
public:
  virtual bool Test(std::string_view name) noexcept = 0;

protected:
  ~ORXNameTest() = default;
};

// An extent without points has left > right.
struct ORXExtent {
  double left = 0;
  double bottom = 0;
  double right = -1;
  double top = -1;
};
