#include "platform/Guid.h"

#include <random>
#include <string_view>

namespace vardenix {

std::string NewGuid() {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string guid = "{xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx}";
    std::random_device random;
    std::uniform_int_distribution<size_t> digit(0, 15);
    std::uniform_int_distribution<size_t> variant(8, 11);
    for (char& c : guid) {
        if (c == 'x')
            c = Digits[digit(random)];
        else if (c == 'y')
            c = Digits[variant(random)];
    }
    return guid;
}

} // namespace vardenix
