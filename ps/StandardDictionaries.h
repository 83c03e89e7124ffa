// The dictionaries that every pass starts with, and what is kept of them between passes.
//
// A pass leaves its "systemdict" and "userdict" on the dictionary stack, beneath those of the next.
// Most documents never change the first and many leave the second empty, so that nobody can tell
// such a dictionary from another pass's: one stands for all of them, until one could be reached.
// That takes an "end" of the next pass's own dictionaries, or a "systemdict" on top that has lost
// operators.
#pragma once

#include <cstdint>

#include "ps/PSRef.h"

namespace orxeps {

class Machine;

// Nothing between the passes.
struct StandardDictionaries {
  PSRef systemdict;
  PSRef globaldict;
  PSRef userdict;
  PSRef errordict;
  PSRef statusdict;

  // Throws LimitReached and std::bad_alloc.
  static StandardDictionaries Make(Machine& machine);
};

// The two that stand for those of earlier passes which are as they were made. Nothing is ever found
// in them, because a complete "systemdict" lies above.
class UntouchedDictionaries {
public:
  [[nodiscard]] bool Holds(const PSObject* dictionary) const noexcept {
    return dictionary == systemdict.Get() || dictionary == userdict.Get();
  }
  [[nodiscard]] bool IsEmpty() const noexcept { return !systemdict && !userdict; }

  // Puts what stands for them in the place of dictionaries that are as they were made.
  // `systemdictAt` is the position on the dictionary stack where those of a pass begin, unless the
  // document has closed them.
  void StandFor(Machine& machine, const StandardDictionaries& made,
                std::int32_t systemdictAt) noexcept;
  // Gives every pass dictionaries of its own again. Throws LimitReached and std::bad_alloc; what is
  // not done by then is still to be done.
  void Separate(Machine& machine);
  void Clear() noexcept {
    systemdict = {};
    userdict = {};
  }

private:
  PSRef systemdict;
  PSRef userdict;
};

}  // namespace orxeps
