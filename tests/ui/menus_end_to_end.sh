#!/usr/bin/env bash
# Uses the menus of the finished program as a person would: on a display, with a keyboard and a mouse.
# usage: tools/on-virtual-desktop menus_end_to_end.sh PROGRAM
set -euo pipefail
program=$1
. "$(dirname "$0")/end_to_end_steps.sh"

# open_menu WHAT COMMAND...: the command opens a menu, which is a window of its own on the screen.
menus_are() { [ "$(xdotool search --onlyvisible --pid "$pid" | wc -l)" -eq $(($1 + 1)) ]; }
open_menu() {
  eventually "no menu is open before: $1" menus_are 0
  "${@:2}"
  eventually "$1" menus_are 1
}
# A second press in the place of the first would be half of a double click: no two menus in one place.
row_menu() { xdotool mousemove --window "$window" "$1" 102 click 3; }
folder_menu() {
  read -r x y < <("$tools/where-is" "Search path")
  xdotool mousemove "$x" "$y" click 1
}
# press KEYS...: each key by itself, as a hand does.
press() { for each in "$@"; do xdotool key --delay 40 "$each"; done; }
clipboard_is() { [ "$(timeout 5 xclip -o -selection clipboard)" = "$1" ]; }
# xwininfo takes the pointer and waits for a click, unless somebody holds it.
pointer_is_free() { timeout 0.5 xwininfo || [ $? -eq 124 ]; }
file_holds() { [ "$(cat "$1")" = "$2" ]; }
folder_button_shows() { "$tools/where-is" "Search path" --now; }
folder_button_is_gone() { ! folder_button_shows; }

documents="$desk/My 'Docs'"
file="$documents/-n \"quoted\".txt"
mkdir -p "$documents" "$data"
echo text >"$file"
cat >"$data/tools.csv" <<END
Title,Command,Params,Keywords
Other,other,,two
Notes,"$documents/-n ""quoted"".txt",a  b,three
END
cat >"$desk/bin/xdg-terminal-exec" <<END
#!/bin/sh
pwd >"$desk/terminal"
while [ -d "$desk" ]; do sleep 0.2; done
END
# A configured program that takes its time, and waits for the test to let it go.
cat >"$desk/bin/slow-editor" <<END
#!/bin/sh
"$desk/bin/record" slow-editor "\$@"
while [ -d "$desk" ] && [ ! -e "$desk/go" ]; do sleep 0.05; done
END
chmod +x "$desk/bin/"*
cat >"$data/kavendra-settings.json" <<END
{
  "dataDirectoryPath": "$data", "logDirectoryPath": "$data", "showBuiltinItems": false,
  "searchPathActions": [
    {"appName": "Slow & Steady", "binaryPath": "slow-editor", "targetType": "File"},
    {"appName": "Missing", "binaryPath": "no-such-editor", "targetType": "File"}
  ]
}
END
export PATH=$desk/bin:$PATH

start
query three
eventually "the row is there" status_is "1 items | Loaded 2 items"

open_menu "a right click opens the menu of the row" row_menu 300
press Down Down Right Down Down Return
eventually "the row is copied" status_is "1 items | Copied Row"
eventually "another program pastes the row" \
  clipboard_is "Notes"$'\t'"$file"$'\t'"a  b"$'\t'three$'\t'tools.csv
xdotool type x
eventually "what one types afterwards goes on with the query" status_is "0 items | Copied Row"
xdotool key BackSpace
eventually "and brings the row back" status_is "1 items | Copied Row"

open_menu "the menu opens again" row_menu 350
press Down Down Right Down Return
eventually "another program pastes the cell" clipboard_is "$file"

open_menu "the menu opens in another column" row_menu 100
press Down Return
eventually "the parent directory opens in the file manager" recorded "files\t$documents"
eventually "the status line says so" status_is "1 items | Opened parent directory"

open_menu "the menu opens for the data file" row_menu 150
press Up Up Up Return
eventually "the data file opens" recorded "editor\t$data/tools.csv"

xdotool key Tab # from the field to the table
open_menu "the menu key opens the menu of the selected row" xdotool key Menu
press Down Down Right Return
eventually "the command line is copied" clipboard_is "\"$file\" a  b"
open_menu "so does Shift+F10" xdotool key shift+F10
press Escape

xdotool mousemove --window "$window" 100 300
open_menu "below the rows there is a menu" xdotool click 3
press Down Down Return
eventually "the data directory opens" recorded "files\t$data"
eventually "the status line says that" status_is "1 items | Opened config directory"

eventually "there is no folder button" folder_button_is_gone
printf '"%s"' "$file" | xclip -selection clipboard
xdotool mousemove --window "$window" 300 30 click 1 key --clearmodifiers ctrl+a key --clearmodifiers ctrl+v
eventually "a pasted path in quotes makes the folder button appear" folder_button_shows

open_menu "the folder button opens its menu" folder_menu
press Down Right Down Down Return
eventually "the directory opens in the file manager" status_is "0 items | Opened directory in Finder"
[ "$(grep -cxF "$(printf 'files\t%s' "$documents")" "$record")" -eq 2 ]

open_menu "the folder menu opens again" folder_menu
press Down Right Down Down Down Return
eventually "a terminal starts in the directory" file_holds "$desk/terminal" "$documents"
eventually "and is not waited for" status_is "0 items | Opened directory in Terminal"

open_menu "the folder menu opens once more" folder_menu
press Down Right Down Return
eventually "the configured program gets the file" recorded "slow-editor\t$file"
eventually "no menu is on the screen while it is waited for" menus_are 0
eventually "and nothing holds the pointer" pointer_is_free
touch "$desk/go"
eventually "its end is told" status_is "0 items | Opened file with Slow & Steady"

open_menu "the folder menu opens to copy" folder_menu
press Down Down Down Right Down Return
eventually "another program pastes the name" clipboard_is "-n \"quoted\".txt"

xdotool mousemove --window "$window" 300 30 click 1 key End type x
eventually "a path that names nothing makes the folder button go" folder_button_is_gone
quit
echo "all steps passed"
