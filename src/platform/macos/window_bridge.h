#pragma once

// What a toolkit does not say of a window, said to the NSWindow under it. A view is the NSView of a
// window that is there, as QWidget::winId() gives it; null, and a view without a window, are passed
// over.
namespace ostrel::WindowBridge {

// Above everything, full-screen programs and the menu bar included, on every Space, and in no
// animation of the system's.
void coverDisplay(void* view);

// A card beside the work that goes on: over the other windows on every Space, also while another
// program is in front.
void floatBesideWork(void* view);

}  // namespace ostrel::WindowBridge
