# Shared by the scripts beside it: messages, places and the machine's own measure. Sourced, never run.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${NIMBLETYPE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/nimbletype}
started=$SECONDS
# Clones in different places share what ccache keeps.
export CCACHE_BASEDIR=$top CCACHE_NOHASHDIR=1

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
# r2: the second recipe of the build.
llama_prefix=$cache/llama-$llama_version-$cpu_key-r2

llama_server=$llama_prefix-peers/bin/llama-server

starter_model=$top/models/starter/starter-q8_0.gguf

# configure PRESET [OPTION...]: the build folder build/PRESET, with the cached llama.cpp unless one is installed.
configure() {
  local preset=$1; shift
  quietly "$top/build/$preset/configure.log" cmake -S "$top" --preset "$preset" -DCMAKE_PREFIX_PATH="$llama_prefix" \
    -DNIMBLETYPE_LLAMA_SERVER="$llama_server" "$@"
}

# build PRESET [TARGET...]
build() {
  local preset=$1; shift
  quietly "$top/build/$preset/build.log" cmake --build "$top/build/$preset" ${1:+--target "$@"}
}

# The programs users run, in build/release/bin.
build_programs() {
  say "building (release)"
  configure release -DNIMBLETYPE_TESTS=OFF -DNIMBLETYPE_BENCH=OFF
  build release
}

# run_demo OUT_DIR EDITOR [OPTION...]: the whole road from key press to accepted text, on a private desktop.
run_demo() {
  local out=$1 editor=$2; shift 2
  mkdir -p "$out"
  "$top/tools/stage/with_desktop.sh" "$top/build/release/bin/nimbletype-demo" \
    --app "$top/build/release/bin/nimbletype" --model "$starter_model" --editor "$editor" --out "$out" "$@"
}
