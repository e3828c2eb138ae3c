# Functions of the scripts; sourced by them.

say() { printf '%s\n' "$*"; }

fail() {
  printf 'kavendra: %s\n' "$*" >&2
  exit 1
}

# quietly WHAT COMMAND...: runs a command and shows its output only if it fails.
quietly() {
  local what=$1 output command
  shift
  command=$*
  output=$(mktemp)
  if ! "$@" >"$output" 2>&1; then
    tail -n 60 "$output" >&2
    rm -f "$output"
    fail "$what failed (the command was: ${command:0:120})"
  fi
  rm -f "$output"
}

# display_answers: whether there is a display. Starts no program, because none may be installed yet.
display_answers() {
  local number=${DISPLAY:-}
  number=${number#*:}
  number=${number%%.*}
  case ${DISPLAY:-} in
    '') ;;
    :* | unix:*) [ -S "/tmp/.X11-unix/X$number" ] && return ;;
    *) return ;; # a display of another machine
  esac
  case ${WAYLAND_DISPLAY:-} in
    '') return 1 ;;
    /*) [ -S "$WAYLAND_DISPLAY" ] ;;
    *) [ -S "${XDG_RUNTIME_DIR:-}/$WAYLAND_DISPLAY" ] ;;
  esac
}

# build_preset PRESET [CMAKE OPTIONS...]: configures and builds a preset of CMakePresets.json.
build_preset() {
  local preset=$1
  shift
  say "Building the $preset preset"
  quietly "Configuring the $preset preset" cmake --preset "$preset" "$@"
  quietly "Building the $preset preset" cmake --build "build/$preset"
}

# measure_window start|typing TURNS: builds and runs tools/measure_window.py.
measure_window() {
  [[ $2 =~ ^[1-9][0-9]*$ ]] || fail "usage: $0 [TURNS]"
  tools/install-packages build bench display
  build_preset release -DKAVENDRA_BENCHMARKS=ON
  exec tools/on-virtual-desktop tools/measure_window.py "$1" build/release/bin/kavendra \
    build/release/bin/kavendra_empty_window "$2"
}
