#ifndef ORLAN_C_INSTALL_H
#define ORLAN_C_INSTALL_H

#include "orlan/c/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/// A phone: what the library knows of the machine it runs on. Made by `orlan_phone_new` out of function
/// tables, or by a ready-made phone's own function.
typedef struct orlan_phone orlan_phone;

/// Frees a phone, NULL too. `ORLAN_BUSY` while it is installed, inside any callback and inside its own main
/// loop. Every function that is given it from now on returns `ORLAN_INVALID_ARGUMENT`; for those that are
/// inside it on other threads this one waits, so that nothing of the host's is called afterwards. Main
/// thread.
ORLAN_API orlan_status orlan_phone_free(orlan_phone* phone);

/// The backend's environments, as every function takes them; any other value means staging.
enum { ORLAN_DEVELOPMENT = 0, ORLAN_STAGING = 1, ORLAN_PRODUCTION = 2, ORLAN_NIGHTLY = 3 };

/// The two families of backend addresses.
enum { ORLAN_PLATFORM_API = 0, ORLAN_TRANSMISSION_LAYER = 1 };

/// Where one family of one environment answers: an absolute https URL, or http to the loopback; for
/// the platform API and for development and production of the transmission layer without a path, for its
/// nightly with the path "/api/", for its staging with the path "/api".
typedef struct orlan_base_url {
  int64_t environment;
  int32_t family;
  orlan_string url;
} orlan_base_url;

typedef struct orlan_options {
  size_t struct_size;
  const orlan_base_url* base_urls;  ///< in place of the built-in ones, which answer nobody
  size_t base_url_count;
} orlan_options;

/// Makes the library of this process, on `phone`. `options` may be NULL. `ORLAN_BUSY` when one is installed
/// already, from C++ too: there is one at a time; and inside a callback. Main thread.
ORLAN_API orlan_status orlan_install(orlan_phone* phone, const orlan_options* options);

/// Ends the library: completions that wait are called with an error, streams end, delegates are forgotten,
/// what was logged reaches its file. Nothing but the completions is called meanwhile, and nobody afterwards.
/// The phone stays and may be installed again. `ORLAN_BUSY` inside a callback: post it to the main loop.
/// Main thread.
ORLAN_API orlan_status orlan_uninstall(void);

#ifdef __cplusplus
}
#endif

#endif
