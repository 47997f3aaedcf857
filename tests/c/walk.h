#ifndef ORLAN_TESTS_C_WALK_H
#define ORLAN_TESTS_C_WALK_H

#include "c/MiniPhone.h"

#ifdef __cplusplus
extern "C" {
#endif

/// NULL, or what was not as it should be.
const char* walk(mini_phone* phone);

#ifdef __cplusplus
}
#endif

#endif
