# Debian packages, by what needs them; sourced by ./check and ./demo.
# orlan_install GROUP… installs what is missing of the groups build, test, format, tidy, fuzz, bench, arm, docs.

orlan_packages() {
  case $1 in
    build) echo g++ cmake ninja-build ccache pkg-config libfmt-dev libsimdjson-dev libgeographiclib-dev \
                libutf8proc-dev libcurl4-openssl-dev libsqlite3-dev libplist-dev libcli11-dev libpugixml-dev \
                ca-certificates ;;
    test) echo libgtest-dev libgmock-dev libssl-dev locales python3 python3-jsonschema tzdata help2man ;;
    format) echo clang-format ;;
    tidy) echo clang-tidy clang libclang-rt-14-dev ;;
    fuzz) echo clang libclang-rt-14-dev ;;
    bench) echo libboost-dev libgeos++-dev libs2-dev rapidjson-dev nlohmann-json3-dev libspdlog-dev binutils ;;
    arm) echo g++-aarch64-linux-gnu qemu-user ;;
    docs) echo doxygen ;;
  esac
}

orlan_install() {
  local group package missing=() as_root=()
  for group in "$@"; do
    for package in $(orlan_packages "$group"); do
      dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null; then
      as_root=(sudo)
    else
      echo "These Debian packages are needed, and neither root nor sudo is here to install them:" >&2
      echo "  ${missing[*]}" >&2
      return 1
    fi
  fi
  echo "installing: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq &&
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" \
      >/dev/null || {
    echo "Could not install: ${missing[*]}" >&2
    return 1
  }
}
