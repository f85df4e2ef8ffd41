// A program that shows a window with nothing in it: what any start takes, and any wait for events.

#include <windows.h>

namespace {

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY)
        PostQuitMessage(0);
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    WNDCLASSA kind{};
    kind.lpfnWndProc = WindowProc;
    kind.hInstance = instance;
    kind.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    kind.lpszClassName = "Empty";
    RegisterClassA(&kind);
    CreateWindowA("Empty", "Empty", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 640, 480, nullptr, nullptr,
                  instance, nullptr);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    return 0;
}
