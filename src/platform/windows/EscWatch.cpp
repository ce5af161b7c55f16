#include "platform/windows/EscWatch.h"

#include "platform/windows/HeldEvents.h"

#include <QApplication>
#include <QWidget>

#include <cstdlib>
#include <vector>
#include <xcb/xcb.h>

namespace vardenix {

namespace {

constexpr xcb_keysym_t EscapeKey = 0xFF1B;
constexpr auto BetweenLooks = std::chrono::milliseconds(10);
// Even asking for the time costs something where posts are painted by the ten thousand.
constexpr int CallsBetweenClocks = 8;

template <typename Reply>
struct Freed {
    void operator()(Reply* reply) const { std::free(reply); }
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Freed<Reply>>;

class DisplayEye : public EscEye {
public:
    DisplayEye() : display_(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(display_) == 0)
            FindEscapeKeys();
    }
    ~DisplayEye() override { xcb_disconnect(display_); }

    void Begin() override {
        const uint32_t keys = XCB_EVENT_MASK_KEY_PRESS;
        for (const QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible() && window->internalWinId() != 0)
                xcb_change_window_attributes(
                    display_, static_cast<xcb_window_t>(window->internalWinId()),
                    XCB_CW_EVENT_MASK, &keys);
        xcb_flush(display_);
        Look();
    }

    // Takes what has come in, without waiting for more.
    bool Look() override {
        bool pressed = false;
        while (const auto event =
                   Owned<xcb_generic_event_t>(xcb_poll_for_event(display_))) {
            if ((event->response_type & 0x7F) != XCB_KEY_PRESS)
                continue;
            const auto* press =
                reinterpret_cast<const xcb_key_press_event_t*>(event.get());
            for (const xcb_keycode_t key : escapeKeys_)
                pressed = pressed || press->detail == key;
        }
        return pressed;
    }

private:
    void FindEscapeKeys() {
        const xcb_setup_t* setup = xcb_get_setup(display_);
        const auto count =
            static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
        const Owned<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
            display_, xcb_get_keyboard_mapping(display_, setup->min_keycode, count),
            nullptr));
        if (!map)
            return;
        const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
        for (int key = 0; key < count; ++key)
            if (symbols[key * map->keysyms_per_keycode] == EscapeKey)
                escapeKeys_.push_back(
                    static_cast<xcb_keycode_t>(setup->min_keycode + key));
    }

    xcb_connection_t* display_;
    std::vector<xcb_keycode_t> escapeKeys_;
};

std::unique_ptr<EscEye> EyeOfPlatform() {
    if (QApplication::platformName() == "xcb")
        return std::make_unique<DisplayEye>();
    return std::make_unique<HeldEvents>();
}

} // namespace

EscWatch::EscWatch() = default;
EscWatch::~EscWatch() = default;

void EscWatch::Begin() {
    if (!eye_)
        eye_ = EyeOfPlatform();
    eye_->Begin();
    pressed_ = false;
    calls_ = 0;
    nextLook_ = std::chrono::steady_clock::now() + BetweenLooks;
}

bool EscWatch::Pressed() {
    if (!eye_ || pressed_ || ++calls_ % CallsBetweenClocks != 0)
        return pressed_;
    const auto now = std::chrono::steady_clock::now();
    if (now >= nextLook_) {
        pressed_ = eye_->Look();
        nextLook_ = now + BetweenLooks;
    }
    return pressed_;
}

} // namespace vardenix
