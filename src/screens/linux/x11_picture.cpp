#include "screens/linux/x11_picture.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QImage>
#include <QtEndian>
#include <cstdlib>
#include <memory>

namespace ostrel {
namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

// A piece of memory that this process and the X server see. It ends with both their uses of it.
class SharedMemory {
  public:
    explicit SharedMemory(std::size_t bytes) : id_(shmget(IPC_PRIVATE, bytes, 0600)) {
        if (id_ >= 0) {
            void* address = shmat(id_, nullptr, 0);
            // NOLINTNEXTLINE(performance-no-int-to-ptr,cppcoreguidelines-pro-type-cstyle-cast)
            data_ = address == reinterpret_cast<void*>(-1) ? nullptr : address;
        }
    }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;
    ~SharedMemory() {
        if (data_) {
            shmdt(data_);
        }
        if (id_ >= 0) {
            shmctl(id_, IPC_RMID, nullptr);
        }
    }

    [[nodiscard]] std::uint32_t id() const { return static_cast<std::uint32_t>(id_); }
    [[nodiscard]] const uchar* data() const { return static_cast<const uchar*>(data_); }

  private:
    int id_;
    void* data_ = nullptr;
};

bool hasCommonPixels(const xcb_setup_t& setup, const xcb_screen_t& screen) {
    const bool isOurOrder = setup.image_byte_order == (QSysInfo::ByteOrder == QSysInfo::LittleEndian
                                                           ? XCB_IMAGE_ORDER_LSB_FIRST
                                                           : XCB_IMAGE_ORDER_MSB_FIRST);
    const bool isTrueColour = screen.root_depth == 24 || screen.root_depth == 32;
    for (auto format = xcb_setup_pixmap_formats_iterator(&setup); format.rem > 0;
         xcb_format_next(&format)) {
        if (format.data->depth == screen.root_depth) {
            return isOurOrder && isTrueColour && format.data->bits_per_pixel == 32;
        }
    }
    return false;
}

bool fetch(xcb_connection_t* x, const xcb_screen_t& screen, const QRect& area,
           const SharedMemory& memory) {
    const xcb_shm_seg_t segment = xcb_generate_id(x);
    const std::unique_ptr<xcb_generic_error_t, Free> refusal(
        xcb_request_check(x, xcb_shm_attach_checked(x, segment, memory.id(), 0)));
    if (refusal) {
        return false;
    }
    const auto cookie = xcb_shm_get_image(
        x, screen.root, static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
        static_cast<std::uint16_t>(area.width()), static_cast<std::uint16_t>(area.height()), ~0U,
        XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0);
    const std::unique_ptr<xcb_shm_get_image_reply_t, Free> reply(
        xcb_shm_get_image_reply(x, cookie, nullptr));
    xcb_shm_detach(x, segment);
    return static_cast<bool>(reply);
}

}  // namespace

QPixmap x11Picture(const QRect& nativeArea) {
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* x = x11 ? x11->connection() : nullptr;
    if (!x || nativeArea.isEmpty()) {
        return {};
    }
    const xcb_query_extension_reply_t* shm = xcb_get_extension_data(x, &xcb_shm_id);
    const xcb_setup_t* setup = xcb_get_setup(x);
    const xcb_screen_t* screen = xcb_setup_roots_iterator(setup).data;
    if (!shm || !shm->present || !screen || !hasCommonPixels(*setup, *screen)) {
        return {};
    }
    constexpr int kBytesPerPixel = 4;
    const std::size_t line = static_cast<std::size_t>(nativeArea.width()) * kBytesPerPixel;
    const SharedMemory memory(line * static_cast<std::size_t>(nativeArea.height()));
    if (!memory.data() || !fetch(x, *screen, nativeArea, memory)) {
        return {};
    }
    const QImage image(memory.data(), nativeArea.width(), nativeArea.height(),
                       static_cast<qsizetype>(line), QImage::Format_RGB32);
    return QPixmap::fromImage(image.copy(), Qt::NoFormatConversion);
}

}  // namespace ostrel
