# shellcheck shell=bash
# Making what people install, and trying it as they would.

# make_package PRESET: of what that preset has built. What is made is in build/package.
make_package() {
  rm -rf build/package
  mkdir -p build/package
  if [ "$system" = macos ]; then
    make_disk_image "$1"
  else
    cpack --config "build/$1/CPackConfig.cmake" -B build/package
  fi
}

# An application that runs without Homebrew, signed for this machine alone, and an image to carry it.
make_disk_image() {
  local app=build/package/Trellivar.app
  cp -R "build/$1/app/Trellivar.app" $app &&
    macdeployqt $app -qmldir=app/qml -executable=$app/Contents/MacOS/trellivar-desk &&
    codesign --force --deep --options runtime --entitlements packaging/macos/Trellivar.entitlements \
      --sign - $app &&
    codesign --verify --deep --strict $app &&
    hdiutil create -volname Trellivar -srcfolder $app -format UDZO -ov build/package/Trellivar.dmg
}

# Packs the release build, reads what the package tells others, installs it, starts what it brought, and
# removes it. Needs the purposes app, apptest and package.
check_package() {
  local work status=0
  make_package release || return 1
  if [ "$system" = macos ]; then return 0; fi
  if dpkg-query -W -f '${db:Status-Status}' trellivar 2>/dev/null | grep -qx installed; then
    echo "trellivar is installed here already; remove it first, since this check installs and removes it."
    return 1
  fi
  work=$(mktemp -d) || return 1
  check_package_in "$work" build/package/trellivar_*.deb || status=$?
  rm -rf "$work"
  return $status
}

# check_package_in FOLDER PACKAGE
check_package_in() {
  local work=$1 package=$2 status=0
  dpkg-deb --extract "$package" "$work/content" && check_descriptions "$work/content" || return 1
  paths_of "$work/content" | existing >"$work/before"
  as_root apt-get -q -y --no-install-recommends -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=600 install \
    "$PWD/$package" || status=1
  if [ $status -eq 0 ]; then check_installed "$work" || status=1; fi
  as_root dpkg --purge trellivar || status=1
  paths_of "$work/content" | existing >"$work/after"
  diff "$work/before" "$work/after" || {
    echo "The removal has left these."
    status=1
  }
  return $status
}

# What menus, software centres and the system read, and what nobody should have to see.
check_descriptions() {
  local share="$1/usr/share" icons="$1/usr/share/icons/hicolor" file
  for file in "$1/usr/lib/udev/rules.d/70-trellivar.rules" "$icons/scalable/apps/trellivar.svg" \
    "$icons"/{16x16,32x32,64x64,128x128,256x256,512x512}/apps/trellivar.png; do
    [ -s "$file" ] || { echo "The package lacks ${file#"$1"}."; return 1; }
  done
  desktop-file-validate "$share/applications/trellivar.desktop" &&
    appstreamcli validate --no-net "$share/metainfo/com.trellivar.Trellivar.metainfo.xml" || return 1
  if grep -rlF -- "$PWD" "$1"; then
    echo "These name the folder that they were built in."
    return 1
  fi
}

# Where the files and folders of an extracted package will be.
paths_of() { (cd "$1" && find . -mindepth 1 | sed 's/^\.//' | LC_ALL=C sort); }

existing() {
  local path
  while IFS= read -r path; do
    if [ -e "$path" ]; then printf '%s\n' "$path"; fi
  done
}

# check_installed FOLDER: the programs tell their version, and the application shows its window.
check_installed() {
  local version
  version=$(dpkg-query -W -f '${Version}' trellivar)
  tells_version "Trellivar $version" trellivar &&
    tells_version "$version" trellivarctl &&
    opens_window "$1" /usr/bin/trellivar
}

# tells_version TEXT PROGRAM
tells_version() {
  local answer
  answer=$(cd / && "/usr/bin/$2" --version) || return 1
  case $answer in
    *"$1") ;;
    *)
      echo "$2 --version says \"$answer\", not \"$1\"."
      return 1
      ;;
  esac
}

# opens_window FOLDER PROGRAM: with nothing of the user's but a home folder, and without a word of complaint.
opens_window() {
  local root=$PWD status=0
  mkdir -m 700 "$1/home"
  (cd / && env -i PATH="$PATH" HOME="$1/home" XDG_RUNTIME_DIR="$1/home" LC_ALL=C.UTF-8 QT_QUICK_BACKEND=software \
    "$root/script/lib/with-display" "$root/script/lib/shows_window" "$2" --simulate) \
    2>"$1/complaints" || status=1
  cat "$1/complaints"
  if [ $status -ne 0 ]; then echo "$2 shows no window."; fi
  [ $status -eq 0 ] && [ ! -s "$1/complaints" ]
}
