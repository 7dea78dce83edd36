#include "bench/support/WindowWatch.h"

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <thread>
#include <xcb/xcb.h>

namespace tarvessa::bench {

namespace {

using namespace std::chrono_literals;

constexpr auto pause = 2ms;
constexpr auto patience = 60s;
// Longer than any program needs between two steps of its first painting.
constexpr auto settled = 600ms;
constexpr uint16_t stripLeft = 12;
constexpr uint16_t stripWidth = 24;
// A window this small is not a main one (input methods, selection owners).
constexpr uint16_t smallest = 200;

template <typename T>
std::unique_ptr<T, decltype(&free)> owned(T* reply) {
    return {reply, &free};
}

} // namespace

WindowWatch::WindowWatch() : m_connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(m_connection) != 0) {
        xcb_disconnect(m_connection);
        throw std::runtime_error("there is no X display");
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(m_connection);
}

WindowWatch::~WindowWatch() {
    xcb_disconnect(m_connection);
}

WindowWatch::Clock::time_point WindowWatch::firstComplete() {
    const unsigned window = nextMapped();
    QByteArray picture = strip(window);
    Clock::time_point changed = Clock::now();
    while (Clock::now() - changed < settled) {
        std::this_thread::sleep_for(pause);
        QByteArray now = strip(window);
        if (now != picture) {
            picture = std::move(now);
            changed = Clock::now();
        }
    }
    return changed;
}

unsigned WindowWatch::nextMapped() {
    const Clock::time_point begin = Clock::now();
    while (Clock::now() - begin < patience) {
        while (const auto event = owned(xcb_poll_for_event(m_connection))) {
            constexpr uint8_t sentBit = 0x80;
            if ((event->response_type & ~sentBit) != XCB_MAP_NOTIFY)
                continue;
            const xcb_window_t window = reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window;
            const auto geometry =
                owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
            if (geometry && geometry->width >= smallest && geometry->height >= smallest)
                return window;
        }
        std::this_thread::sleep_for(1ms);
    }
    throw std::runtime_error("no window appeared");
}

QByteArray WindowWatch::strip(unsigned window) {
    const auto geometry =
        owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    if (!geometry)
        throw std::runtime_error("the window went away");
    const auto image =
        owned(xcb_get_image_reply(m_connection,
                                  xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, stripLeft, 0,
                                                stripWidth, geometry->height, ~0U),
                                  nullptr));
    // A window that reaches beyond the screen has no picture to read yet.
    return image ? QByteArray(reinterpret_cast<const char*>(xcb_get_image_data(image.get())),
                              xcb_get_image_data_length(image.get()))
                 : QByteArray();
}

} // namespace tarvessa::bench
