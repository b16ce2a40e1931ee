// A source for the targets of CMakeLists.txt beside it.
