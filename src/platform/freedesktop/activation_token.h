#pragma once

#include <cstddef>
#include <string>

namespace brimlo {

/// The longest activation token that is taken from anybody, in bytes; a longer one counts as none.
inline constexpr std::size_t kLongestActivationToken = 1024;

/// The token with which the desktop started this process, to show that the person asked for it (XDG
/// Activation, Startup Notification); empty without one. It is taken out of the environment,
/// because it is not meant for the programs that this one starts. For the start of the process.
std::string takeActivationToken();

}  // namespace brimlo
