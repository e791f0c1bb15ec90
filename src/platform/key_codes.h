#pragma once

#include <cstdint>

namespace brimlo {

/// Virtual key codes: what the program calls the keys that it knows. Each session translates them
/// to and from its own.
namespace key_code {
inline constexpr std::uint16_t kV = 9;
inline constexpr std::uint16_t kReturn = 36;
inline constexpr std::uint16_t kTab = 48;
inline constexpr std::uint16_t kEscape = 53;
inline constexpr std::uint16_t kKeypadEnter = 76;
inline constexpr std::uint16_t kPageUp = 116;
inline constexpr std::uint16_t kPageDown = 121;
inline constexpr std::uint16_t kLeftArrow = 123;
inline constexpr std::uint16_t kRightArrow = 124;
inline constexpr std::uint16_t kDownArrow = 125;
inline constexpr std::uint16_t kUpArrow = 126;
inline constexpr std::uint16_t kOther = 0xFFFF;  ///< any other key
}  // namespace key_code

/// The modifiers of a key event, as bits.
namespace modifier_flag {
inline constexpr std::uint64_t kShift = 0x20000;
inline constexpr std::uint64_t kControl = 0x40000;
inline constexpr std::uint64_t kOption = 0x80000;
inline constexpr std::uint64_t kCommand = 0x100000;
}  // namespace modifier_flag

/// The modifiers of a hotkey, as bits; others than those of key events.
namespace hot_key_modifier {
inline constexpr std::uint32_t kCommand = 0x100;
inline constexpr std::uint32_t kShift = 0x200;
}  // namespace hot_key_modifier

}  // namespace brimlo
