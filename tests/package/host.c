/* A host in C, through the installed header alone. */
#include <orlan/c/orlan.h>
#include <stdio.h>

int main(void) {
  puts(orlan_version());
  return 0;
}
