#include "app/mac/mac_application.h"

int main(int argc, char** argv) {
    return ostrel::runMacApplication(argc, argv);
}
