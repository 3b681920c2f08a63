#!/usr/bin/env bash
# Builds the sample standards database from its Access SQL with kelvo-host and the
# module beside it (build.lsp does the work through kv_create_db, kv_connect and
# kv_command). The file is made under a temporary name and moved into place only when
# every statement ran, so a failed build never leaves a file that looks finished.
#
# Usage: build.sh KELVO-HOST [OUTPUT]   (default OUTPUT: examples/standards.mdb)
# Rebuilds only when OUTPUT is missing or older than the SQL, build.lsp, the host or the
# module; set KELVO_STANDARDS_FORCE=1 to rebuild anyway.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
host=${1:?usage: build.sh KELVO-HOST [OUTPUT]}
out=${2:-$here/../standards.mdb}
module=$(dirname "$host")/KelvoBrx15.arx

if [ -f "$out" ] && [ "${KELVO_STANDARDS_FORCE:-0}" != 1 ]; then
  stale=0
  for input in "$here"/*.sql "$here/build.lsp" "$host" "$module"; do
    [ "$input" -nt "$out" ] && stale=1
  done
  if [ $stale = 0 ]; then
    echo "$out is up to date."
    exit 0
  fi
fi

tmp="$out.building"
rm -f "$tmp"
if ! KELVO_STANDARDS_DB="$tmp" KELVO_STANDARDS_SQL="$here" "$host" "$here/build.lsp"; then
  rm -f "$tmp"
  echo "build.sh: the standards database was not built." >&2
  exit 1
fi
mv -f "$tmp" "$out"
echo "Made $out."
