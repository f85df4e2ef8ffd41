# The Wine prefix in build/wineprefix and the server that stays up while a command of ours works with it.

export WINEPREFIX=$BUILD/wineprefix
export WINEARCH=win64
export WINEDEBUG=-all
# No .NET and no HTML engine to ask for; no crash dialog: a crash ends the program with its exit code; and no
# entries in the desktop's menu for what is installed in the prefix.
export WINEDLLOVERRIDES='mscoree,mshtml=;winedbg.exe,winemenubuilder.exe=d'

# The prefix is made without a display; the mark tells a finished one from one whose making was cut short.
make_wine_prefix() {
    [[ -e $WINEPREFIX/.complete ]] && return
    say "Making the Wine prefix (once)"
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    logged wine-prefix env -u DISPLAY bash -c 'wineboot -i && wineserver -w' 8>&- || exit 1
    touch "$WINEPREFIX/.complete"
}

# Without a server that persists, each command line under Wine pays for starting one. The first program starts
# Wine's services and the first window its desktop, which keep the starter's pipes open for as long as they
# live: so these have none. The desktop would end with its last program, to be started by the next one anew, so
# one that waits for input holds it.
start_wine() {
    make_wine_prefix
    at_exit stop_wine "$WINEPREFIX"
    wineserver -p 8>&- >/dev/null 2>&1 || fail "the Wine server does not start in $WINEPREFIX"
    wine cmd /c exit 8>&- >/dev/null 2>&1 </dev/null || fail "Wine does not start in $WINEPREFIX"
    # shellcheck disable=SC2034  # it only has to stay open
    exec {desktop_input}> >(exec wine cmd 8>&- >/dev/null 2>&1)
    wine rundll32 user32.dll,GetDesktopWindow 8>&- >/dev/null 2>&1 </dev/null || true
}

stop_wine() { WINEPREFIX=$1 wineserver -k >/dev/null 2>&1; }

# The path by which programs under Wine know a file.
windows_path() {
    local path
    path=$(realpath -m "$1")
    printf 'Z:%s' "${path//\//\\}"
}
