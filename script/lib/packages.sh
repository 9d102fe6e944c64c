# shellcheck shell=bash
# Installs what a script needs, and only what is missing, from the system's own packages.

# need PURPOSE…: the purposes of packages.txt. Costs a moment when everything is there.
need() {
  local missing
  missing=$(missing_packages "$@") || exit 1
  if [ -z "$missing" ]; then return 0; fi
  # shellcheck disable=SC2086 # names of packages, to be split
  step "install packages" install_now $missing || fail "cannot install:" $missing
  missing=$(missing_packages "$@") || exit 1
  # shellcheck disable=SC2086
  [ -z "$missing" ] || fail "still missing after the installation:" $missing
}

missing_packages() {
  local wanted installed package
  wanted=$(packages_for "$@")
  if [ "$system" = macos ]; then
    command -v brew >/dev/null || fail "Homebrew is needed, see https://brew.sh"
    installed=$(brew list --formula -1)
  else
    command -v dpkg-query >/dev/null ||
      fail "this is no Debian; install the equivalents of script/lib/packages.txt and use cmake --preset"
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' | sed -n 's/^installed //p')
  fi
  for package in $wanted; do
    printf '%s\n' "$installed" | grep -qxF -- "$package" || printf '%s\n' "$package"
  done
}

# The packages of the given purposes on this system.
packages_for() {
  local column=2 purpose
  if [ "$system" = macos ]; then column=3; fi
  for purpose in "$@"; do
    awk -v purpose="$purpose" -v column=$column \
      '$1 == purpose && $column != "-" { print $column }' script/lib/packages.txt
  done
}

install_now() {
  if [ "$system" = macos ]; then
    NONINTERACTIVE=1 HOMEBREW_NO_INSTALL_UPGRADE=1 HOMEBREW_NO_INSTALL_CLEANUP=1 \
      HOMEBREW_NO_ENV_HINTS=1 brew install --quiet "$@"
    return
  fi
  # A list that cannot be refreshed may still be good enough; the installation tells.
  as_root apt-get -q update || true
  as_root apt-get -q -y --no-install-recommends -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=600 \
    -o Acquire::Retries=3 install "$@"
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    env DEBIAN_FRONTEND=noninteractive "$@"
  elif command -v sudo >/dev/null; then
    sudo env DEBIAN_FRONTEND=noninteractive "$@"
  else
    echo "Neither root nor sudo: run as root: $*"
    return 1
  fi
}
