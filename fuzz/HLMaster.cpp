#include "fuzz/FuzzedProgram.h"
#include "query/modMasterQuery.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quarn::fuzz::FuzzedProgram fuzzed;
    quarn::ParseHLCSServers(fuzzed.program, {reinterpret_cast<const char*>(data), size});
    fuzzed.RequireBounds(size);
    return 0;
}
