# shellcheck shell=bash
# Sourced first by every script. Goes to the root of the checkout and loads the shared parts.
# Everything here runs on the bash 3.2 of macOS too.
set -euo pipefail
exec </dev/null # nothing ever asks a question, and a closed standard input is none
CDPATH='' cd -P -- "$(dirname -- "${BASH_SOURCE[0]}")/../.."

# Stops the script with one line on standard error.
fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

case $(uname -s) in
  Darwin) system=macos ;;
  *) system=debian ;;
esac

if [ "$system" = macos ]; then
  cores=$(sysctl -n hw.ncpu)
else
  cores=$(nproc)
fi

. script/lib/steps.sh
. script/lib/packages.sh
. script/lib/build.sh
. script/lib/clang.sh
