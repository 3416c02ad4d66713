# Shared by the scripts beside it: messages, places and the machine's own measure. Sourced, never run.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${NIMBLETYPE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/nimbletype}
started=$SECONDS

say() { printf '[%4ds] %s\n' $((SECONDS - started)) "$*"; }
die() { printf 'error: %s\n' "$*" >&2; exit 1; }

# Runs a command with its output in a log; shows the log's end only when the command fails.
quietly() {
  local log=$1; shift
  mkdir -p "$(dirname "$log")"
  "$@" >"$log" 2>&1 || { tail -n 40 "$log" >&2; die "'$*' failed; the whole log is $log"; }
}

llama_version=0.5.0
# Built for this processor's own instructions, so a cache that moves to another machine must not be reused.
cpu_key=$({ uname -m; grep -m1 -E '^(flags|Features)' /proc/cpuinfo || true; } | sha256sum | cut -c1-8)
llama_prefix=$cache/llama-$llama_version-$cpu_key
