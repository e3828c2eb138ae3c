#!/bin/sh
# make-test-desktop.sh DIRECTORY: makes a test desktop in an existing directory.
#
# Its applications only record their start: each appends its name and arguments, separated by tabs, as one line to
# DIRECTORY/record, and copies its /proc files (proc(5)) to record.environ and record.status. The
# environment variables that make GIO use this desktop, and no session bus, are in DIRECTORY/environment:
#
#     while read -r variable; do export "$variable"; done < DIRECTORY/environment
#
# DIRECTORY also has the tools of macOS that are called, and Microsoft Excel, at their paths on a Mac.
set -eu

directory=$(cd "$1" && pwd)
applications=$directory/data/applications
mkdir -p "$applications" "$directory/bin" "$directory/config" "$directory/none" "$directory/cache"
mkdir -p -m 700 "$directory/runtime"
ln -sfn /usr/share/mime "$directory/data/mime"

cat > "$directory/bin/record" <<'END'
#!/bin/sh
record=${0%/*}/../record
# Uses builtins only, because the shell blocks signals while it starts another program.
while read -r line; do
    printf '%s\n' "$line"
done < "/proc/$$/status" > "$record.status"
cat /proc/$$/environ > "$record.environ"
line=$1
shift
for argument; do
    line=$(printf '%s\t%s' "$line" "$argument")
done
printf '%s\n' "$line" >> "$record"
END
chmod +x "$directory/bin/record"
# Programs of the built-in items, so that the same items are shown on every machine.
ln -sfn record "$directory/bin/loginctl"
ln -sfn record "$directory/bin/x-terminal-emulator"

# application NAME ARGUMENTS
application() {
    cat > "$applications/test-$1.desktop" <<END
[Desktop Entry]
Type=Application
Name=Test $1
Exec="$directory/bin/record" $1 $2
END
}
application browser %u
application other-browser %U
application editor %u
application files %u
application takes-no-addresses ''

cat > "$directory/config/mimeapps.list" <<'END'
[Default Applications]
x-scheme-handler/http=test-browser.desktop
x-scheme-handler/https=test-browser.desktop
text/plain=test-editor.desktop
text/csv=test-editor.desktop
inode/directory=test-files.desktop
END

mkdir -p "$directory/usr/bin" "$directory/Applications/Microsoft Excel.app" "$directory/Applications/Browser.app"
# Like open(1), it fails when no application opens the file.
cat > "$directory/usr/bin/open" <<END
#!/bin/sh
for argument; do
    case \$argument in *.unknown) echo "No application knows how to open URL file://\$argument." >&2; exit 1 ;; esac
done
exec "$directory/bin/record" open "\$@"
END
cat > "$directory/usr/bin/osascript" <<END
#!/bin/sh
exec "$directory/bin/record" osascript "\$@"
END
chmod +x "$directory/usr/bin/open" "$directory/usr/bin/osascript"

cat > "$directory/environment" <<END
XDG_DATA_HOME=$directory/data
XDG_DATA_DIRS=$directory/none
XDG_CONFIG_HOME=$directory/config
XDG_CONFIG_DIRS=$directory/none
XDG_CACHE_HOME=$directory/cache
XDG_RUNTIME_DIR=$directory/runtime
DBUS_SESSION_BUS_ADDRESS=disabled:
KAVENDRA_TEST_DESKTOP=$directory
END
