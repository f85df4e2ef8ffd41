# Configuring and building one of the presets of CMakePresets.json.

JOBS=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}

# build_preset PRESET [TARGET...]: brings the targets of a preset, all of them by default, up to date.
build_preset() {
    local preset=$1 configure=(cmake --preset "$1") build=(cmake --build --preset "$1" -j "$JOBS")
    shift
    if command -v ccache >/dev/null; then
        configure+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    if (($# > 0)); then
        build+=(--target "$@")
    fi
    [[ $preset != win* ]] || ensure_geoip_ranges
    say "Building $preset${*:+ ($*)}"
    logged "configure-$preset" "${configure[@]}" || return
    logged "build-$preset" "${build[@]}"
}
