#include "fuzz/FuzzedProgram.h"
#include "query/modGamQuery.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view datagram(reinterpret_cast<const char*>(data), size);
    quarn::fuzz::FuzzedProgram fuzzed;
    quarn::ParseQ3EngineStatus(fuzzed.program, datagram, 1);
    fuzzed.RequireBounds(size);
    fuzzed.RequireCleanName(datagram);
    return 0;
}
