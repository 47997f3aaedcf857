#ifndef ORLAN_C_ORLAN_H
#define ORLAN_C_ORLAN_H

/// The whole library for hosts in C, and in every language that can call C.
///
/// A host makes a phone out of function tables (`phone.h`), or takes a ready-made one
/// (`phones/c/linux.h`), installs it (`install.h`), starts the library (`plugin.h`) and hears
/// of what happens (`notifications.h`, `monitors.h`). The rules for all of it stand in `types.h`.
#include "orlan/c/install.h"
#include "orlan/c/monitors.h"
#include "orlan/c/notifications.h"
#include "orlan/c/phone.h"
#include "orlan/c/plugin.h"
#include "orlan/c/types.h"

#endif
