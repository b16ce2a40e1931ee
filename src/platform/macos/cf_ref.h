#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace ostrel {

// Owns one reference to a Core Foundation object and releases it: the only place that calls
// CFRelease. For what a function with "Copy" or "Create" in its name hands over.
template <typename Ref>
class CfRef {
  public:
    explicit CfRef(Ref adopted = nullptr) : ref_(adopted) {}
    CfRef(CfRef&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
    CfRef& operator=(CfRef&& other) noexcept {
        std::swap(ref_, other.ref_);
        return *this;
    }
    ~CfRef() { release(); }

    // Null when there is none. Valid as long as this lives.
    [[nodiscard]] Ref get() const { return ref_; }

    // For a function that hands its object over through a parameter; what was held is released.
    [[nodiscard]] Ref* out() {
        release();
        return &ref_;
    }

    explicit operator bool() const { return ref_ != nullptr; }

  private:
    void release() {
        if (const Ref gone = std::exchange(ref_, nullptr)) {
            CFRelease(gone);
        }
    }

    Ref ref_;
};

}  // namespace ostrel
