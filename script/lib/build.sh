# shellcheck shell=bash
# Building, and running what was built.

# build PRESET [CONFIGURE ARGUMENT…]
build() {
  local preset=$1
  shift
  cmake --preset "$preset" "$@" && cmake --build "build/$preset" -j "$cores"
}

# programs PRESET FOLDER: the executables that the build tree makes in a folder. Asked of the build
# rules, so that a program which no longer exists is not run from an old build.
programs() {
  ninja -C "build/$1" -t targets all | sed -n "s#^$2/\([^/:]*\): CXX_EXECUTABLE_LINKER__.*#\1#p"
}

# The C++ sources of the checkout, each name ended by a null character.
sources() {
  find . \( -name build -o -name '.?*' \) -prune -o -type f \
    \( -name '*.h' -o -name '*.hpp' -o -name '*.cpp' -o -name '*.mm' \) -print0
}
