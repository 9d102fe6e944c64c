# shellcheck shell=bash
# Fuzz targets: programs fuzz_* of build/fuzz/fuzz, each with its seeds in fuzz/corpus/NAME.

# fuzz_targets: their names; fails when there are none, or when targets and seed folders do not match.
fuzz_targets() {
  local targets seeds
  targets=$(programs fuzz fuzz | sort)
  [ -n "$targets" ] || { echo "No fuzz targets were built." >&2; return 1; }
  seeds=$(find fuzz/corpus -mindepth 1 -maxdepth 1 -type d ! -empty -exec basename {} \; | sort)
  if [ "$targets" != "$seeds" ]; then
    printf 'Fuzz targets and their seeds in fuzz/corpus differ. Targets:\n%s\nSeeds:\n%s\n' \
      "$targets" "$seeds" >&2
    return 1
  fi
  printf '%s\n' "$targets"
}

# fuzz SECONDS CORPORA TARGET…: each target, two at a time. What a target finds is kept in CORPORA/TARGET;
# its seeds are read only.
fuzz() {
  local seconds=$1 corpora=$2
  shift 2
  printf '%s\n' "$@" | xargs -n 1 -P 2 script/lib/fuzz_target "$seconds" "$corpora"
}
