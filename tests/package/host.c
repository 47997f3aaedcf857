/* A host in C, through installed headers alone: one refused start on the Linux phone, in its main loop. */
#include <phones/c/linux.h>
#include <stdio.h>
#include <string.h>

struct host {
  orlan_phone* phone;
  char outcome[128];
};

static void did_fail(void* context, const orlan_error* error) {
  struct host* host = context;
  snprintf(host->outcome, sizeof host->outcome, "%s", error->description.data);
}

static void start(void* context) {
  struct host* host = context;
  const orlan_plugin_delegate delegate = {
      .struct_size = sizeof delegate, .context = host, .did_fail = did_fail};
  if (orlan_start(ORLAN_STAGING, NULL, 0, &delegate) != ORLAN_OK) puts(orlan_last_problem());
  orlan_uninstall();
  orlan_linux_stop(host->phone);
}

int main(int count, char** arguments) {
  struct host host = {NULL, ""};
  orlan_linux_options options = {.struct_size = sizeof options, .silent = true};
  options.home = orlan_str(count > 1 ? arguments[1] : NULL);
  if (orlan_linux_phone_new(&options, &host.phone) != ORLAN_OK ||
      orlan_install(host.phone, NULL) != ORLAN_OK ||
      orlan_linux_post(host.phone, 0, start, &host) != ORLAN_OK || orlan_linux_run(host.phone) != ORLAN_OK ||
      orlan_phone_free(host.phone) != ORLAN_OK) {
    puts(orlan_last_problem());
    return 1;
  }
  printf("Orlan %s: %s\n", orlan_version(), host.outcome);
  return strstr(host.outcome, "OrlanConfig.plist is required") == host.outcome ? 0 : 1;
}
