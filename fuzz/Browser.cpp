// The whole browser, driven by a script of the user's, the network's and the system's actions. After every
// step the list is intact, nothing is running, and log and memory are bounded by the input; and finally the
// program ends once, with complete files.
//
// The input is the settings file, the definitions file (empty: ordinary ones) and the script: see
// fuzz/BrowserActions.h. "@" and a number before an action delay it, so that it runs in the middle of the
// next ones.

#include "fuzz/ByteScript.h"
#include "fuzz/FuzzedBrowser.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quarn::fuzz::ByteScript script(data, size);
    const std::string settings = script.Text();
    const std::string definitions = script.Text();
    quarn::fuzz::FuzzedBrowser(settings, definitions).Run(script);
    return 0;
}
