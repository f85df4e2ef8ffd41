# An X display of our own, for windows without a viewer: Xvfb on the first free number, with a window
# manager, without which every window takes two seconds to hide.

display_is_usable() { [[ -n ${DISPLAY:-} ]] && timeout 5 xdpyinfo >/dev/null 2>&1; }

window_manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }

start_display() {
    local number tries
    exec {display_number}< <(
        exec Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp -noreset 8>&- 2>"$LOGS/xvfb.log"
    )
    at_exit end_process "$!"
    read -r -t 30 number <&"$display_number" || fail "Xvfb does not start; see build/logs/xvfb.log"
    export DISPLAY=:$number

    openbox --sm-disable 8>&- >"$LOGS/openbox.log" 2>&1 &
    at_exit end_process "$!"
    for ((tries = 0; tries < 200; tries++)); do
        window_manager_runs && return
        sleep 0.05
    done
    fail "openbox does not start; see build/logs/openbox.log"
}
