#include "win32/NameLookUp.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace quarn {

NameLookUp::NameLookUp(Answer answer, BYTE majorVersion, BYTE minorVersion)
    : answer_(std::move(answer)),
      winsock_(majorVersion, minorVersion),
      window_([this](UINT message, WPARAM handle, LPARAM result) {
          OnMessage(message, handle, WSAGETASYNCERROR(result));
      }) {}

NameLookUp::~NameLookUp() {
    Cancel();
    // Once the window is destroyed, completion can no longer be observed, so the buffers are leaked on
    // purpose: Winsock may still write to them.
    for (std::unique_ptr<Request>& request : cancelled_)
        static_cast<void>(request.release());
}

int NameLookUp::Start(const std::string& host) {
    Cancel();
    auto request = std::make_unique<Request>();
    request->message = window_.NextMessage();
    request->handle = WSAAsyncGetHostByName(window_.Handle(), request->message, host.c_str(),
                                            request->result.data(), static_cast<int>(request->result.size()));
    if (request->handle == nullptr)
        return WSAGetLastError();
    current_ = std::move(request);
    return 0;
}

void NameLookUp::Cancel() {
    if (current_)
        cancelled_.push_back(std::move(current_));
}

void NameLookUp::OnMessage(UINT message, WPARAM handle, int error) {
    const auto isThis = [&](const std::unique_ptr<Request>& request) {
        return request && request->message == message && request->handle == reinterpret_cast<HANDLE>(handle);
    };
    if (!isThis(current_)) {
        std::erase_if(cancelled_, isThis);
        return;
    }
    const std::unique_ptr<Request> answered = std::move(current_);
    in_addr address{};
    if (error == 0) {
        const auto& found = *reinterpret_cast<const hostent*>(answered->result.data());
        if (found.h_addrtype == AF_INET && found.h_length == sizeof address &&
            found.h_addr_list[0] != nullptr)
            std::memcpy(&address, found.h_addr_list[0], sizeof address);
        else
            error = WSANO_DATA;
    }
    answer_(error, address);
}

} // namespace quarn
