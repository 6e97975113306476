// SPDX-License-Identifier: MIT
#include "tests/desktop/virtual_display.h"

#include <signal.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdlib>

namespace desktop_tests {
namespace {

struct Freer {
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Answer = std::unique_ptr<Reply, Freer>;

template <class Reply>
Answer<Reply> answer(Reply* reply) {
    return Answer<Reply>(reply);
}

}  // namespace

void VirtualDisplay::Closer::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

VirtualDisplay::~VirtualDisplay() {
    _connection.reset();
    if (!_server) return;
    // Killed, it would leave its lock behind.
    _server->signal(SIGTERM);
    _server->wait();
}

bool VirtualDisplay::start(const char* screen) {
    // It tells the number that it has found free.
    _server.emplace(
        std::vector<std::string>{TEST_XVFB, "-displayfd", "1", "-screen", "0", screen, "-nolisten", "tcp", "-noreset"},
        kit::ownEnvironment());
    const auto number = _server->readLine();
    if (!number) return false;
    _name = u':' + QString::fromStdString(*number);
    _connection.reset(xcb_connect(_name.toLatin1().constData(), nullptr));
    return xcb_connection_has_error(_connection.get()) == 0;
}

quint32 VirtualDisplay::root() const {
    return xcb_setup_roots_iterator(xcb_get_setup(_connection.get())).data->root;
}

QImage VirtualDisplay::picture() const {
    xcb_connection_t* x = _connection.get();
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const auto request = xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, 0, 0, screen->width_in_pixels,
                                       screen->height_in_pixels, ~quint32{0});
    const auto image = answer(xcb_get_image_reply(x, request, nullptr));
    if (!image) return {};
    return QImage(xcb_get_image_data(image.get()), screen->width_in_pixels, screen->height_in_pixels,
                  QImage::Format_RGB32)
        .copy();
}

QRgb VirtualDisplay::pixel(QPoint at) const {
    xcb_connection_t* x = _connection.get();
    const auto request = xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, root(), static_cast<qint16>(at.x()),
                                       static_cast<qint16>(at.y()), 1, 1, ~quint32{0});
    const auto image = answer(xcb_get_image_reply(x, request, nullptr));
    if (!image) return qRgb(0, 0, 0);
    const quint8* bytes = xcb_get_image_data(image.get());
    return qRgb(bytes[2], bytes[1], bytes[0]);
}

// The topmost of those that are shown: programs have others, to talk to one another.
quint32 VirtualDisplay::topWindow() const {
    xcb_connection_t* x = _connection.get();
    const auto tree = answer(xcb_query_tree_reply(x, xcb_query_tree(x, root()), nullptr));
    const xcb_window_t* windows = tree ? xcb_query_tree_children(tree.get()) : nullptr;
    for (int i = tree ? xcb_query_tree_children_length(tree.get()) : 0; i > 0; --i) {
        const auto looks =
            answer(xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, windows[i - 1]), nullptr));
        if (looks && looks->map_state == XCB_MAP_STATE_VIEWABLE) return windows[i - 1];
    }
    return XCB_WINDOW_NONE;
}

QRect VirtualDisplay::window() const {
    xcb_connection_t* x = _connection.get();
    const quint32 window = topWindow();
    if (window == XCB_WINDOW_NONE) return {};
    const auto place = answer(xcb_get_geometry_reply(x, xcb_get_geometry(x, window), nullptr));
    return place ? QRect(place->x, place->y, place->width, place->height) : QRect();
}

QString VirtualDisplay::windowTitle() const {
    xcb_connection_t* x = _connection.get();
    constexpr char name[] = "_NET_WM_NAME";
    const auto atom = answer(xcb_intern_atom_reply(x, xcb_intern_atom(x, 1, sizeof name - 1, name), nullptr));
    if (!atom) return {};
    constexpr quint32 longest = 256;
    const auto title = answer(xcb_get_property_reply(
        x, xcb_get_property(x, 0, topWindow(), atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, longest), nullptr));
    if (!title) return {};
    return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(title.get())),
                             xcb_get_property_value_length(title.get()));
}

void VirtualDisplay::focusWindow() {
    xcb_set_input_focus(_connection.get(), XCB_INPUT_FOCUS_PARENT, topWindow(), XCB_CURRENT_TIME);
    xcb_flush(_connection.get());
}

void VirtualDisplay::send(quint8 kind, quint8 detail, QPoint at) {
    xcb_test_fake_input(_connection.get(), kind, detail, XCB_CURRENT_TIME, root(), static_cast<qint16>(at.x()),
                        static_cast<qint16>(at.y()), 0);
    xcb_flush(_connection.get());
}

void VirtualDisplay::click(QPoint at, Button button) {
    send(XCB_MOTION_NOTIFY, 0, at);
    send(XCB_BUTTON_PRESS, button);
    send(XCB_BUTTON_RELEASE, button);
}

void VirtualDisplay::drag(QPoint from, QPoint to) {
    constexpr int steps = 8;
    send(XCB_MOTION_NOTIFY, 0, from);
    send(XCB_BUTTON_PRESS, LeftButton);
    for (int i = 1; i <= steps; ++i)
        send(XCB_MOTION_NOTIFY, 0, from + (to - from) * i / steps);
    send(XCB_BUTTON_RELEASE, LeftButton);
}

quint8 VirtualDisplay::codeOf(Key key) const {
    xcb_connection_t* x = _connection.get();
    const xcb_setup_t* setup = xcb_get_setup(x);
    const auto count = static_cast<quint8>(setup->max_keycode - setup->min_keycode + 1);
    const auto map =
        answer(xcb_get_keyboard_mapping_reply(x, xcb_get_keyboard_mapping(x, setup->min_keycode, count), nullptr));
    if (!map) return 0;
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int i = 0; i < count; ++i) {
        if (symbols[i * map->keysyms_per_keycode] == key) return static_cast<quint8>(setup->min_keycode + i);
    }
    return 0;
}

void VirtualDisplay::press(Key key, std::vector<Key> modifiers) {
    for (Key modifier : modifiers)
        send(XCB_KEY_PRESS, codeOf(modifier));
    send(XCB_KEY_PRESS, codeOf(key));
    send(XCB_KEY_RELEASE, codeOf(key));
    for (Key modifier : modifiers)
        send(XCB_KEY_RELEASE, codeOf(modifier));
}

void VirtualDisplay::type(const char* letters) {
    for (const char* each = letters; *each; ++each)
        press(static_cast<Key>(*each));
}

}  // namespace desktop_tests
