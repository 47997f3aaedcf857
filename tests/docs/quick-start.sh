#!/usr/bin/env bash
# The walk of docs/quick-start.md: a backend, a host, notifications. Arguments: the program, the host, the sources.
set -euo pipefail
program=$1 host=$2 source=$3
cd "$(mktemp -d)"
trap 'kill "$backend" 2>/dev/null; wait "$backend" 2>/dev/null; rm -rf "$PWD"' EXIT

mkfifo told
"$program" backend >told 2>problems &
backend=$!
exec {lines}<told
read -r -u "$lines" first
cat <&"$lines" >/dev/null &
url=${first##* }

"$host" "$source/examples/data/hampshire-ride.gpx" "$url" >seen
head -n 3 seen
[ ! -s problems ] || { cat problems; exit 1; }
grep -q '^running as device ' seen
[ "$(grep -c '^    ' seen)" -ge 20 ]
[ -s first-host-home/cache/orlan-sdk.log ]
