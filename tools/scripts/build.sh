# Configuring and building one of the presets of CMakePresets.json.

JOBS=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}

configure_preset() {
    [[ $1 != win* ]] || ensure_geoip_ranges
    logged "configure-$1" cmake --preset "$1"
}

# build_preset PRESET [TARGET...]: brings the targets of a preset, all of them by default, up to date.
build_preset() {
    local preset=$1 build=(cmake --build --preset "$1" -j "$JOBS")
    shift
    if (($# > 0)); then
        build+=(--target "$@")
    fi
    say "Building $preset${*:+ ($*)}"
    configure_preset "$preset" || return
    logged "build-$preset" "${build[@]}"
}
