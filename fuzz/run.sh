#!/usr/bin/env bash
# Runs each fuzz target for a while on a corpus that grows from the stored seeds and finds.
# usage: fuzz/run.sh BUILD_FOLDER [SECONDS]
set -uo pipefail
if [ $# -lt 1 ]; then
  echo "usage: fuzz/run.sh BUILD_FOLDER [SECONDS]" >&2
  exit 2
fi
build=$(cd "$1" && pwd) || exit 2
seconds=${2:-60}
here=$(cd "$(dirname "$0")" && pwd)
work=$build/fuzz-work
mkdir -p "$work"
status=0

for target in atoms:movie movie:movie declaration:declaration script:script region:region; do
  name=fuzz_${target%%:*}
  seeds=${target##*:}
  corpus=$work/$name
  finds=$build/fuzz-finds/$name
  mkdir -p "$corpus" "$finds"
  folders=("$corpus" "$here/seeds/$seeds")
  [ -d "$here/finds/$seeds" ] && folders+=("$here/finds/$seeds")
  [ "$seeds" = script ] && folders+=("$here/../tests/scripts/language")
  if [ "$seeds" = movie ]; then
    "$build/bin/fuzz_seeds" "$work/fuzz_seeds" || exit 1
    folders+=("$work/fuzz_seeds")
  fi
  if "$build/bin/$name" -max_total_time="$seconds" -max_len=4096 -rss_limit_mb=512 -malloc_limit_mb=256 -timeout=5 \
    -print_final_stats=1 -artifact_prefix="$finds/" "${folders[@]}" >"$work/$name.log" 2>&1; then
    echo "$name: $(grep '^Done' "$work/$name.log" | tail -n 1)"
  else
    status=1
    echo "$name: FOUND $(grep -m 1 -E 'SUMMARY|ERROR' "$work/$name.log"); the input is kept in $finds, the report in $work/$name.log"
  fi
done
exit $status
