// What a watcher sees of an interpreter in the middle of a pass.

#include <algorithm>
#include <array>
#include <new>
#include <span>

#include "plugin/ORXPrintEPSInterpreter.h"
#include "ps/Execution.h"

namespace orxeps {

namespace {

ORXOperandType TypeOf(const PSObject& object) noexcept {
  switch (object.type) {
    case PSObjectType::Integer:
    case PSObjectType::Real:
      return ORXOperandType::Number;
    case PSObjectType::Boolean:
      return ORXOperandType::Boolean;
    case PSObjectType::String:
      return ORXOperandType::Text;
    case PSObjectType::Name:
      return ORXOperandType::Name;
    case PSObjectType::Array:
      return ORXOperandType::Array;
    case PSObjectType::Procedure:
      return ORXOperandType::Procedure;
    case PSObjectType::Dictionary:
      return ORXOperandType::Dictionary;
    default:
      return ORXOperandType::Other;
  }
}

}  // namespace

ORXPlace ORXPrintEPSInterpreter::Place() const noexcept {
  if (!isVisited) return {};
  return {scanner.input.TokenStart(), executionStack.DefinitionPlace()};
}

ORXOperand ORXPrintEPSInterpreter::Operand(std::int32_t fromTop) const noexcept {
  if (fromTop < 0 || fromTop >= operandStack.Count()) return {};
  const PSObject& object = *operandStack.Below(fromTop);
  const PSParts& parts = object.Parts();
  ORXOperand operand;
  operand.type = TypeOf(object);
  operand.identity = reinterpret_cast<std::uintptr_t>(&object);
  if (object.Is(PSObjectType::Integer)) operand.number = object.intValue;
  if (object.Is(PSObjectType::Real)) operand.number = object.realValue;
  if (object.Is(PSObjectType::Boolean)) operand.number = object.boolValue;
  if (object.Is(PSObjectType::String)) operand.text = parts.stringText.View();
  if (object.Is(PSObjectType::Name)) operand.text = object.nameText.View();
  operand.count = std::max(
      {parts.arrayElements.Count(), parts.procElements.Count(), parts.dictEntries.Count()});
  return operand;
}

ORXGraphics ORXPrintEPSInterpreter::Graphics() const noexcept {
  const GraphicsState& state = canvas.Current();
  const PointMap map(state.ctm);
  ORXGraphics graphics;
  const double matrix[] = {map.a, map.b, map.c, map.d, map.tx, map.ty};
  std::ranges::copy(matrix, graphics.matrix);
  graphics.red = state.red;
  graphics.green = state.green;
  graphics.blue = state.blue;
  graphics.lineWidth = state.lineWidth;
  graphics.unitScale = canvas.unitScale;
  graphics.mark = state.mark;
  graphics.pathPoints = canvas.states.PathCount();
  return graphics;
}

ORXExtent ORXPrintEPSInterpreter::PathExtent() const noexcept {
  ORXExtent extent;
  bool isFirst = true;
  canvas.states.VisitPath([&](std::span<const PathPoint> points) {
    for (const PathPoint& point : points) {
      if (isFirst) extent = {point.x, point.y, point.x, point.y};
      isFirst = false;
      extent.left = std::min(extent.left, point.x);
      extent.bottom = std::min(extent.bottom, point.y);
      extent.right = std::max(extent.right, point.x);
      extent.top = std::max(extent.top, point.y);
    }
  });
  return extent;
}

namespace {

// Looks at the elements of procedures, each procedure once, no deeper than it has room for.
class ProcedureSearch {
public:
  ProcedureSearch(const Machine& owner, ORXNameTest& nameTest) noexcept
      : machine(owner), test(nameTest) {}

  [[nodiscard]] bool Run(const PSObject& procedure) noexcept {
    Add(procedure);
    for (std::size_t i = 0; i < count; ++i) {
      const ObjectList& elements = procedures[i]->Parts().procElements;
      for (std::int32_t k = 1; k <= elements.Count(); ++k) {
        if (++looks > kMostLooks) return false;
        if (Holds(*elements.At(k))) return true;
      }
    }
    return false;
  }

private:
  static constexpr int kMostLooks = 20'000;

  void Add(const PSObject& procedure) noexcept {
    const auto known = std::span(procedures).first(count);
    const bool isKnown =
        std::any_of(known.begin(), known.end(),
                    [&procedure](const PSObject* each) { return each == &procedure; });
    if (!isKnown && count < procedures.size()) procedures[count++] = &procedure;
  }
  bool Holds(const PSObject& element) noexcept {
    const PSObject* object = &element;
    if (object->Is(PSObjectType::Name) && !object->literal) {
      const PSObject* value = LookAtName(machine, object->nameText);
      if (!value) return test.Test(object->nameText.View());
      object = value;
    }
    if (object->Is(PSObjectType::Procedure)) Add(*object);
    return object->Is(PSObjectType::Operator) && test.Test(object->nameText.View());
  }

  const Machine& machine;
  ORXNameTest& test;
  std::array<const PSObject*, 256> procedures{};
  std::size_t count = 0;
  int looks = 0;
};

}  // namespace

bool ORXPrintEPSInterpreter::RunsAny(std::int32_t fromTop, ORXNameTest& test) noexcept {
  if (fromTop < 0 || fromTop >= operandStack.Count()) return false;
  const PSObject& object = *operandStack.Below(fromTop);
  return object.Is(PSObjectType::Procedure) && ProcedureSearch(*this, test).Run(object);
}

bool ORXPrintEPSInterpreter::NameRunsAny(std::string_view name, ORXNameTest& test) noexcept {
  try {
    Name* known = names.FindIfThere(ORXString(name));
    const PSObject* value = known ? LookAtName(*this, NameText(known)) : nullptr;
    return value && value->Is(PSObjectType::Procedure) && ProcedureSearch(*this, test).Run(*value);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool ORXPrintEPSInterpreter::RunningRunsAny(ORXNameTest& test) noexcept {
  const PSObject* procedure = executionStack.RunningProcedure();
  return procedure && ProcedureSearch(*this, test).Run(*procedure);
}

}  // namespace orxeps
