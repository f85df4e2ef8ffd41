# Desktops side by side, each with a display and a Wine prefix of its own: programs that want the focus, the
# clipboard, or to be the only instance of themselves do not meet on two of them.

desktop_displays=()
desktop_prefixes=()

# start_desktops COUNT: the first one has the usual prefix, the others began as copies of it.
start_desktops() {
    local number prefixes=("$WINEPREFIX")
    make_wine_prefix
    for ((number = 2; number <= $1; number++)); do
        copy_prefix "$WINEPREFIX" "$WINEPREFIX-$number"
        prefixes+=("$WINEPREFIX-$number")
    done
    for WINEPREFIX in "${prefixes[@]}"; do
        start_display
        start_wine
        desktop_displays+=("$DISPLAY")
        desktop_prefixes+=("$WINEPREFIX")
    done
    use_desktop 1
}

# The copy has the same files, but for the registry, which is written in place. One that was cut short does not
# bear the name.
copy_prefix() {
    [[ -e $2 ]] && return
    rm -rf "$2.part"
    cp -al "$1" "$2.part"
    cp -a --remove-destination "$1"/*.reg "$2.part/"
    mv "$2.part" "$2"
}

# use_desktop NUMBER: what is started from now on appears there; counted from 1.
use_desktop() {
    export DISPLAY=${desktop_displays[$1 - 1]}
    export WINEPREFIX=${desktop_prefixes[$1 - 1]}
}

# desktops_from NUMBER: that one and all behind it, a line each: the display, a blank, the prefix.
desktops_from() {
    local index
    for ((index = $1 - 1; index < ${#desktop_displays[@]}; index++)); do
        printf '%s %s\n' "${desktop_displays[index]}" "${desktop_prefixes[index]}"
    done
}
