# Sourced by the end-to-end scripts: a person's desktop that is the test's own, and what such a person does.
# Wants $program, the kavendra to use; gives $desk, the directory of it all, $data, $log and $record.

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tools=$here/../../tools
desk=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$desk"' EXIT

sh "$here/../support/make-test-desktop.sh" "$desk"
while read -r variable; do
  case $variable in DBUS_SESSION_BUS_ADDRESS=* | XDG_RUNTIME_DIR=*) ;; *) export "${variable?}" ;; esac
done <"$desk/environment"
export HOME=$desk/home ASAN_OPTIONS=detect_leaks=0
mkdir -p "$HOME/Some Folder"
data=$XDG_CONFIG_HOME/kavendra
log=$data/kavendra.log
record=$desk/record

# eventually WHAT COMMAND...: the command succeeds within ten seconds.
eventually() {
  local what=$1
  shift
  for _ in $(seq 100); do
    if "$@" >/dev/null 2>&1; then
      echo "ok: $what"
      return
    fi
    sleep 0.1
  done
  echo "FAILED: $what (status line: $("$tools/read-status-line"))"
  cat "$record" "$log" 2>/dev/null || true
  exit 1
}

status_is() { [ "$("$tools/read-status-line")" = "$1" ]; }
recorded() { grep -qxF "$(printf '%b' "$1")" "$record"; }
window_shows() { xdotool search --onlyvisible --name '^kavendra$'; }
windows_are() { [ "$(window_shows | wc -l)" -eq "$1" ]; }
process_gone() { ! kill -0 "$1"; }

start() {
  "$program" &
  pid=$!
  eventually "the window shows" window_shows
  window=$(window_shows | head -n 1)
  xdotool windowactivate --sync "$window"
}
quit() {
  xdotool windowactivate --sync "$window" key --clearmodifiers alt+F4
  eventually "the program ends with its window" process_gone "$pid"
  wait "$pid" || { echo "FAILED: exit status $?"; exit 1; }
}
# query TEXT: replaces what the search field holds.
query() { xdotool key --clearmodifiers ctrl+a type --delay 5 -- "$1"; }
