#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/x11/x11_atoms.h"

namespace brimlo {

/// The targets that stand for plain text, best first. COMPOUND_TEXT and TEXT come before STRING,
/// which cannot say more than Latin-1.
std::vector<xcb_atom_t> textTargets(const X11Atoms& atoms);

/// The text in `bytes`, which an owner sent as `type`: converted from the encoding that the type
/// stands for (ICCCM, section 2.6.2), ill-formed sequences replaced.
std::string decodeText(const X11Atoms& atoms, xcb_atom_t type, std::string bytes);

struct EncodedText {
  xcb_atom_t type;
  std::shared_ptr<const std::string> bytes;
};
/// `text` as the text target `target` has it, what the encoding lacks replaced; none when `target`
/// is none that this program offers.
std::optional<EncodedText> encodeText(const X11Atoms& atoms, xcb_atom_t target,
                                      const std::shared_ptr<const std::string>& text);

/// The targets for which `encodeText` gives something.
std::vector<xcb_atom_t> offeredTextTargets(const X11Atoms& atoms);

}  // namespace brimlo
