#include "fuzz/FuzzedProgram.h"
#include "query/modMasterQuery.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quarn::fuzz::FuzzedProgram fuzzed;
    std::string body(reinterpret_cast<const char*>(data), size);
    quarn::ParseQ3EngineServers(fuzzed.program, body);
    fuzzed.RequireBounds(size);
    return 0;
}
