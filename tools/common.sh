# Sourced by the scripts: what they say, and how they stop.

say() { printf '%s\n' "$*"; }

fail() {
  printf 'kavendra: %s\n' "$*" >&2
  exit 1
}

# quietly WHAT COMMAND...: runs a command; its output is shown only when it fails.
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

# build_preset PRESET [CMAKE OPTIONS...]: configures and builds a preset of CMakePresets.json.
build_preset() {
  local preset=$1
  shift
  say "Building the $preset preset"
  quietly "Configuring the $preset preset" cmake --preset "$preset" "$@"
  quietly "Building the $preset preset" cmake --build "build/$preset"
}
