#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace vardenix::tests {

// Sets an environment variable, or takes it away, until it goes.
class Environment {
public:
    Environment(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name))
            old_ = old;
        Put(value);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() { Put(old_ ? old_->c_str() : nullptr); }

private:
    void Put(const char* value) const {
        if (value != nullptr)
            setenv(name_, value, 1);
        else
            unsetenv(name_);
    }

    const char* name_;
    std::optional<std::string> old_;
};

} // namespace vardenix::tests
