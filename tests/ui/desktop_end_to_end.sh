#!/usr/bin/env bash
# The finished program in its desktop: starts of the program while it runs, and the desktop's light and dark.
# usage: tools/on-virtual-desktop desktop_end_to_end.sh PROGRAM
set -euo pipefail
program=$1
. "$(dirname "$0")/end_to_end_steps.sh"

active_window_is() { [ "$(xdotool getactivewindow)" = "$1" ]; }
is_minimised() { xprop -id "$window" WM_STATE | grep -q 'window state: Iconic'; }

# start_again WHAT SECONDS: a start that has to end by itself, with success, within the time.
start_again() {
  local status=0 begin=$EPOCHREALTIME
  XDG_ACTIVATION_TOKEN=token-of-the-second timeout "$2" "$program" || status=$?
  [ "$status" -eq 0 ] || { echo "FAILED: $1: exit status $status"; exit 1; }
  echo "ok: $1 ($(((${EPOCHREALTIME/./} - ${begin/./}) / 1000)) ms)"
}

# colour_is COLOUR: in the table, below its last row.
colour_is() {
  [ "$(import -window "$window" -crop 1x1+400+440 -depth 8 txt:- | grep -o '#[0-9A-F]\{6\}')" = "$1" ]
}

mkfifo "$desk/color-scheme"
"$here/../support/settings-portal" <"$desk/color-scheme" >"$desk/portal" &
exec 7>"$desk/color-scheme"
eventually "the portal is there" grep -q ready "$desk/portal"

export XDG_ACTIVATION_TOKEN=token-of-the-first DESKTOP_STARTUP_ID=id-of-the-first_TIME0
start
unset XDG_ACTIVATION_TOKEN DESKTOP_STARTUP_ID
eventually "the table is light where there is no preference" colour_is '#FFFFFF'
echo 1 >&7
eventually "switching the desktop to dark changes the open window" colour_is '#1E1E20'
quit
start
eventually "the next start is dark from the beginning" colour_is '#1E1E20'
echo 2 >&7
eventually "and light again at once" colour_is '#FFFFFF'

xdotool windowminimize "$window"
eventually "the window is minimised" is_minimised
start_again "a second start ends" 2
eventually "it brings the window back" active_window_is "$window"
query "open safari"
eventually "what one types goes into the search field" status_is "1 items | Loaded 12 items"

xev -name "another window" >/dev/null &
xdotool search --sync --onlyvisible --name '^another window$' windowactivate --sync
start_again "a second start ends" 2
eventually "it brings the window before another one that has the focus" active_window_is "$window"

xdotool windowminimize "$window"
eventually "the window is minimised again" is_minimised
kill -STOP "$pid"
start_again "a second start does not hang with the first" 4
kill -CONT "$pid"
eventually "the first comes forward once it can" active_window_is "$window"

cat >"$data/tools.csv" <<END
Title,Command,Params,Keywords
Program,$desk/bin/record,program,one
END
quit
XDG_ACTIVATION_TOKEN=token-of-the-third DESKTOP_STARTUP_ID=id_TIME1 start
start_again "a second start ends" 2
query "one"
xdotool key Return
eventually "a program starts" recorded 'program'
if grep -aqE 'XDG_ACTIVATION_TOKEN|DESKTOP_STARTUP_ID' "$record.environ"; then
  echo "FAILED: the program got a token that was meant for the window"
  exit 1
fi
quit
exec 7>&-
echo "all steps passed"
