# Sourced by run and by scripts/accept-symbols. The shared library exports nothing but ours; what hosts call is listed in
# symbols.txt, and a difference is shown as one.

exported_symbols() {  # LIBRARY [TYPES]: all names, demangled, in words that do not depend on the standard library's own spelling
  nm -D --defined-only -C "$1" | grep -E "^[0-9a-f]+ [${2:-A-Za-z}] " | cut -d' ' -f3- |
    sed -E 's/@@?ORLAN.*$//; s/\[abi:cxx11\]//g; s/std::__cxx11::/std::/g
            s/std::basic_string<char, std::char_traits<char>, std::allocator<char> >/std::string/g
            s/std::basic_string_view<char, std::char_traits<char> >/std::string_view/g; s/ >/>/g' | LC_ALL=C sort -u
}

# The C functions, and the members of the classes behind the headers that orlan/orlan.hpp offers. What a compiler may as
# well have made inline (weak symbols) is left out, so that every compiler and build type gives the same list.
host_symbols() {  # LIBRARY…
  local classes library
  classes=$(sed -nE 's|^#include "orlan/.*/([A-Za-z]+)\.hpp"|\1|p' "$ORLAN_SOURCE/orlan/orlan.hpp" | paste -sd'|')
  for library in "$@"; do
    exported_symbols "$library" TDBR
  done | LC_ALL=C sort -u | grep -E "^(orlan_|orlan::($classes)::)" | grep -vE '::(Parts|Impl)\b'
}

check_symbols() {
  local library file=$here/symbols.txt strange
  for library in "$prefix/$LIBDIR"/liborlan*.so; do
    strange=$(exported_symbols "$library" | sed -E 's/^(typeinfo|typeinfo name|vtable|VTT|(non-)?virtual thunk|guard variable) (for|to) //' |
      grep -vE '^(orlan_|orlan::)' || true)
    [ -z "$strange" ] || fail "$(basename "$library") exports what is not ours:
$strange"
  done
  readelf -d "$prefix/$LIBDIR/liborlan.so" | grep -q 'SONAME.*liborlan\.so\.[0-9]' || fail "no SONAME with a number"
  diff -u --label accepted "$file" --label now <(host_symbols "$prefix/$LIBDIR"/liborlan*.so) ||
    fail "The exported symbols changed. docs/compatibility.md says what that asks for; then run scripts/accept-symbols."
}
