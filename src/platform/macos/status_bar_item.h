#pragma once

#include <memory>
#include <span>
#include <string_view>

namespace ostrel {

// The program's place in the menu bar: a picture, a text beside it, and a menu.
//
// Main thread only. Needs the shared NSApplication, which QApplication makes.
class StatusBarItem {
  public:
    StatusBarItem();
    StatusBarItem(const StatusBarItem&) = delete;
    StatusBarItem& operator=(const StatusBarItem&) = delete;
    ~StatusBarItem();

    // A PNG whose opacity alone counts: the menu bar colours it. `sidePoints` is its side there;
    // for high resolutions the file has more pixels. One that cannot be read leaves the picture
    // there is.
    void setImage(std::span<const unsigned char> png, double sidePoints);

    void setTitle(std::string_view title);
    void setToolTip(std::string_view toolTip);

    // What a screen reader says in place of the title.
    void setAccessibilityLabel(std::string_view label);

    // An NSMenu, as QMenu::toNSMenu() gives it; it outlives this. Null for none.
    void setMenu(void* menu);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
