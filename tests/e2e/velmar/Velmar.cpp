// A monitoring program that only records its messages: a line for each copy-data message, with the
// identifier, the length and the bytes in hexadecimal, in a file "received.txt" next to itself. A second
// instance ends at once; the first one ends with Quarn.

#include "tests/e2e/velmar/version.h"

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

std::string received;

// The file is replaced in one step, so that a test reads complete lines.
void WriteDown() {
    char path[1024] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string folder = std::string(path, std::string(path).find_last_of('\\') + 1);
    const std::string unfinished = folder + "received.part";
    std::ofstream(unfinished, std::ios::binary) << received;
    MoveFileExA(unfinished.c_str(), (folder + "received.txt").c_str(), MOVEFILE_REPLACE_EXISTING);
}

void Note(const COPYDATASTRUCT& message) {
    received += std::to_string(message.dwData) + " " + std::to_string(message.cbData) + " ";
    for (DWORD i = 0; i < message.cbData; ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<const unsigned char*>(message.lpData)[i]);
        received += digits;
    }
    received += "\n";
    WriteDown();
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COPYDATA && IsWindow(reinterpret_cast<HWND>(wParam))) {
        Note(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
        return TRUE;
    }
    if (message == WM_TIMER && FindWindowA("QuarnMainWindow", nullptr) == nullptr)
        DestroyWindow(window);
    if (message == WM_DESTROY)
        PostQuitMessage(0);
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    constexpr const char* ClassName = "VelmarStandIn";
    if (FindWindowA(ClassName, nullptr) != nullptr)
        return 0;
    WNDCLASSA description{};
    description.lpfnWndProc = &Procedure;
    description.hInstance = instance;
    description.lpszClassName = ClassName;
    RegisterClassA(&description);
    const HWND window = CreateWindowA(ClassName, VELMAR_TITLE, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200,
                                      100, nullptr, nullptr, instance, nullptr);
    SetTimer(window, 1, 100, nullptr);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    return 0;
}
