#!/usr/bin/env bash
# Uses the finished program as a person would: on a display, with a keyboard and a mouse. What it opens is
# taken by a desktop of the test's own that records it.
# usage: tools/on-virtual-desktop launching_end_to_end.sh PROGRAM
set -euo pipefail
program=$1
. "$(dirname "$0")/end_to_end_steps.sh"

launch() {
  query "$1"
  xdotool key Return
}

start
eventually "the first run shows the built-in items and the sample" status_is "12 items | Loaded 12 items"
eventually "the first run leaves its files" test -e "$data/kavendra-settings.json" -a -e "$data/kavendra-state.json" -a -e "$data/Sample.csv"
query "open safari"
eventually "typing narrows the rows" status_is "1 items | Loaded 12 items"
query "open web apple"
xdotool key --clearmodifiers ctrl+Home key Return # the row that was selected is still there and stays selected
eventually "Enter opens the web address in the browser" recorded 'browser\thttps://www.apple.com/'
quit

cat >"$data/tools.csv" <<END
Title,Command,Params,Keywords
Folder,~/Some Folder,,one
Notes,$desk/notes.txt,,two
Quoted,$desk/bin/record,"program ""b c"" 'd ""e' ~/x",three
Wrong,no-such-program,,four
Other Browser,$desk/data/applications/test-other-browser.desktop,https://other.example/?q=a b,five
END
echo text >"$desk/notes.txt"
start
eventually "a file in the data directory is there at the next start" status_is "17 items | Loaded 17 items"
launch "two"
eventually "a file opens in its default application" recorded "editor\t$desk/notes.txt"
eventually "the status line says so" status_is "1 items | Launched (default app): Notes"
launch "one"
eventually "a directory opens in the file manager" recorded "files\t$desk/home/Some Folder"
launch "three"
eventually "a program gets its quoted params" recorded "program\tb c\td \"e\t$desk/home/x"
launch "five"
eventually "a named browser gets the address" recorded 'other-browser\thttps://other.example/?q=a%20b'

launch "four"
eventually "a failure is logged" grep -q '\] Command not found: no-such-program$' "$log"
eventually "a failure shows its dialog" windows_are 2
xdotool key Escape
eventually "Escape dismisses the dialog" windows_are 1
eventually "the message stays in the status line" status_is "1 items | Command not found: no-such-program"

xdotool windowactivate --sync "$window"
query "two"
: >"$record"
eventually "the rows are those of the query" status_is "1 items | Command not found: no-such-program"
xdotool mousemove --window "$window" 100 102 click 1
eventually "a click launches the row" recorded "editor\t$desk/notes.txt"
: >"$record"
# The pause: a window manager receives the button first and passes it on, but not the key.
xdotool mousedown 1 sleep 0.5 key r mouseup 1
eventually "typing during a click does not cancel it" recorded "editor\t$desk/notes.txt"
eventually "and is handled after it" status_is "0 items | Launched (default app): Notes"
quit
echo "all steps passed"
