// The locale.
#include "host/ORXSystem.h"

#include <clocale>
#include <cstring>

int ORXSysGetLocalDecimalChar(char* separator) noexcept {
  const std::lconv* conventions = std::localeconv();
  if (!conventions || !conventions->decimal_point) return 0;
  if (std::strlen(conventions->decimal_point) != 1) return 0;
  *separator = conventions->decimal_point[0];
  return 1;
}
