#include "orlan/c/types.h"

const char* orlan_version(void) {
  return ORLAN_VERSION;
}
