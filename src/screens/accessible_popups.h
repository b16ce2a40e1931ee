#pragma once

namespace ostrel {

// Lets a screen reader find open menus among the application's windows. The toolkit leaves them
// out, as a menu of its own hangs below a menu bar; ours stand alone or belong to a button. To be
// called once, before the QApplication is made.
void installAccessiblePopups();

}  // namespace ostrel
