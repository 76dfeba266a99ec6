#include "viewer/Run.h"

int main(int argc, char** argv) {
    return ZEP::RunViewer(argc, argv);
}
