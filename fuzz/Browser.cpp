// The whole browser, driven by a script of what the user, the network and the system do. Whatever that is,
// after every step the list is whole, nothing is left at work, log and memory are bounded by what came in;
// and in the end the program ends once, with whole files.
//
// The input is the settings file and the definitions file, ordinary ones where it is empty, and the script's
// letters: see fuzz/BrowserActions.cpp. "@" and a number in front of an action let it come in the middle of
// the next ones.

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
