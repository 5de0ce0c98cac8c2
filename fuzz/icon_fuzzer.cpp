// Any bytes in the place of an icon file: a picture that fits, or none, and in bounded time and memory.
#include "Toolkit/IconFile.h"

#include <QGuiApplication>
#include <cstdint>
#include <cstdlib>

using namespace korvane::platform;

extern "C" int LLVMFuzzerInitialize(int *argumentCount, char ***arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argumentCount, *arguments);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const ImagePtr image =
        decodeIcon(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)), 64);
    if (image
        && (image->width > 64 || image->height > 64 || image->width != image->height
            || image->pixels.size() != static_cast<std::size_t>(4 * image->width * image->height)))
        std::abort();
    return 0;
}
