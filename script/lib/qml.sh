# shellcheck shell=bash
# The linter of QML. It reads what the check build has generated about the types of the application.

# lint_qml: fails if there is anything to tell. That includes remarks, which leave qmllint's status at 0.
lint_qml() {
  local remarks
  cmake --preset check -DTRELLIVAR_APP=ON && cmake --build build/check -j "$cores" --target trellivar_app || return 1
  remarks=$(cmake --build build/check --target all_qmllint 2>&1) || { printf '%s\n' "$remarks"; return 1; }
  remarks=$(printf '%s\n' "$remarks" | grep -E '^(Error|Warning|Info):' -A 2) || return 0
  printf '%s\n' "$remarks"
  return 1
}
