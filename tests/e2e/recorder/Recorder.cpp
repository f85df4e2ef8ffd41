// Takes a game's place: writes its command line and the folder it was started in into the file recorded.txt
// next to itself, moved there whole, a mark for each start into starts.txt, and ends.

#include <windows.h>

#include <fstream>
#include <string>

int main() {
    char path[1024];
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string folder = std::string(path, std::string(path).find_last_of('\\') + 1);
    char startedIn[1024];
    GetCurrentDirectoryA(sizeof startedIn, startedIn);

    std::ofstream(folder + "starts.txt", std::ios::app) << '*';
    const std::string unfinished = folder + "recorded.part";
    std::ofstream(unfinished, std::ios::binary) << GetCommandLineA() << '\n' << startedIn << '\n';
    return MoveFileExA(unfinished.c_str(), (folder + "recorded.txt").c_str(), MOVEFILE_REPLACE_EXISTING) ? 0
                                                                                                         : 1;
}
