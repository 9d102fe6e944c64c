# shellcheck shell=bash
# Runs the steps of a script: one line a step with its seconds; the output goes to build/logs and is
# shown only if the step fails. Failed steps are remembered by name.

failed_steps=()
ticker=
mkdir -p build/logs
trap 'stop_ticker' EXIT
trap 'exit 130' INT TERM

# step NAME COMMAND [ARGUMENT…]: answers whether the command succeeded. The command may be a function;
# because the answer is asked for, `set -e` is off inside it, so chain its commands with &&.
step() {
  local name=$1 start=$SECONDS status=0
  local log="build/logs/${name// /-}.log"
  shift
  start_ticker "$name"
  "$@" >"$log" 2>&1 || status=$?
  stop_ticker
  if [ $status -eq 0 ]; then
    report "$name" "$((SECONDS - start)) s"
  else
    report "$name" "FAILED after $((SECONDS - start)) s"
    failed_steps+=("$name")
    show_log "$log"
  fi
  return $status
}

# report NAME TEXT: one line of the overview.
report() {
  if [ -t 1 ]; then printf '\r\033[K'; fi
  printf '%-28s %s\n' "$1" "$2"
}

# While a step runs: on a terminal the seconds so far, elsewhere a line a minute.
start_ticker() {
  local name=$1 script=$$
  (
    seconds=0
    while sleep 1 >/dev/null 2>&1 && kill -0 $script 2>/dev/null; do
      seconds=$((seconds + 1))
      if [ -t 1 ]; then
        printf '\r%-28s %s s ' "$name" $seconds
      elif [ $((seconds % 60)) -eq 0 ]; then
        printf '%-28s %s s so far\n' "$name" $seconds
      fi
    done
  ) &
  ticker=$!
}

stop_ticker() {
  if [ -n "$ticker" ]; then
    kill "$ticker" 2>/dev/null || true
    wait "$ticker" 2>/dev/null || true
    ticker=
  fi
}

# The log of a failed step without its lines of success; of a very long one the two ends.
show_log() {
  local shown="$1.shown" lines
  grep -vE '^\[[0-9]+/[0-9]+\] |^-- |^ +Start +[0-9]+: |Test +#[0-9]+: .* Passed ' "$1" >"$shown" || true
  lines=$(wc -l <"$shown")
  if [ "$lines" -le 400 ]; then
    cat "$shown"
  else
    head -n 200 "$shown"
    printf '… %s lines left out …\n' $((lines - 400))
    tail -n 200 "$shown"
  fi
  rm -f "$shown"
  printf 'The whole output is in %s\n' "$1"
}
