#include "tests/fuzz/StreamInput.h"

#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ZEP::ReadAnyStream(ZEP::TStreamForm::Text, {reinterpret_cast<const char*>(data), size});
    return 0;
}
