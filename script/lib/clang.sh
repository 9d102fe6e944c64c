# shellcheck shell=bash
# The tools of LLVM. On Debian their version is 16 throughout; on a Mac it is what Homebrew has, which
# serves for fuzzing, while the verdicts of the formatter and the linter are those of version 16.

fuzz_arguments=()

# Chooses the compiler of the lint and fuzz presets.
use_clang() {
  if [ "$system" = macos ]; then
    local llvm
    llvm=$(brew --prefix llvm)
    export TRELLIVAR_CLANGXX="$llvm/bin/clang++"
    # Its headers go with its own C++ library, not with that of the system.
    fuzz_arguments=(-DCMAKE_EXE_LINKER_FLAGS="-L$llvm/lib/c++ -Wl,-rpath,$llvm/lib/c++")
  else
    export TRELLIVAR_CLANGXX=clang++-16
    export ASAN_SYMBOLIZER_PATH=/usr/lib/llvm-16/bin/llvm-symbolizer
  fi
  command -v "$TRELLIVAR_CLANGXX" >/dev/null || fail "$TRELLIVAR_CLANGXX is missing"
}

build_fuzz_targets() {
  build fuzz ${fuzz_arguments[@]+"${fuzz_arguments[@]}"}
}

# Prints the name of a clang-format that is version 16.
clang_format_16() {
  local name
  for name in clang-format-16 clang-format; do
    if command -v $name >/dev/null && $name --version | grep -q 'version 16\.'; then
      echo $name
      return
    fi
  done
  return 1
}
