#pragma once

#include "app/desktop/command_table.h"

namespace ostrel {

class StoredDocuments;

// Performs a command that the running program answers, or, where nothing runs, the stored
// documents. Returns the exit status.
[[nodiscard]] int runClientCommand(int& argc, char** argv, const CommandLine& line,
                                   const StoredDocuments& documents);

}  // namespace ostrel
