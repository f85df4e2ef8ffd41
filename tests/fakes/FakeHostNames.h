#pragma once

#include "desktop/HostNames.h"
#include "tests/fakes/FakeEvents.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quarn {

// Answers at once, or as an event when a look-up lasts.
class FakeHostNames : public HostNames {
  public:
    explicit FakeHostNames(FakeEvents& events) : events_(events) {}

    std::map<std::string, std::string> addresses; // dotted address of each name that resolves
    std::vector<std::string> lookUps;
    std::int32_t lookUpMilliseconds = 0;
    std::int32_t cancelled = 0; // look-ups whose answer had not come

    std::string AddressOf(const std::string& host) {
        lookUps.push_back(host);
        const auto found = addresses.find(host);
        return found == addresses.end() ? std::string() : found->second;
    }

    void LookUp(const std::string& host, Answer answer) override {
        Cancel();
        if (lookUpMilliseconds == 0)
            return answer(AddressOf(host));
        underway_ = std::make_shared<Answer>(std::move(answer));
        events_.PostIn(lookUpMilliseconds, [this, host, asked = std::weak_ptr(underway_)] {
            if (const auto still = asked.lock()) {
                underway_.reset();
                (*still)(AddressOf(host));
            }
        });
    }
    void Cancel() override {
        if (underway_)
            ++cancelled;
        underway_.reset();
    }

  private:
    FakeEvents& events_;
    std::shared_ptr<Answer> underway_;
};

} // namespace quarn
