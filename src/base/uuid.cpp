#include "base/uuid.h"

#include <unistd.h>

#include <array>
#include <cstdlib>

namespace brimlo {

std::string makeUuid() {
  std::array<unsigned char, 16> bytes;
  // The kernel's generator fails only where the system call itself is missing. Ids that are not
  // random would silently merge different clips, so the program must not go on without it.
  if (getentropy(bytes.data(), bytes.size()) != 0) std::abort();
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);

  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += kDigits[bytes[i] >> 4];
    text += kDigits[bytes[i] & 0x0F];
  }
  return text;
}

}  // namespace brimlo
