// The border to the host's code: its stream and its generator.
//
// Every call on either goes through CallHost, so whatever is thrown there arrives as HostThrew,
// ends the pass and is never taken for an exception of this library, std::bad_alloc included.
#pragma once

namespace orxeps {

// Thrown in place of whatever came out of the host's code, which ends the pass or query: an
// exception of theirs is never taken for one of ours.
struct HostThrew {};

template <typename Call>
decltype(auto) CallHost(Call call) {
  try {
    return call();
  } catch (...) {
    throw HostThrew{};
  }
}

}  // namespace orxeps
