// An icon decoded from any file is square and has the requested size.
#include "Expect.h"
#include "FuzzedDesktop.h"
#include "platform/gio/ApplicationIcon.h"

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const FuzzedDesktop desktop;
    FuzzedDataProvider data(bytes, size);
    const double points = data.ConsumeIntegralInRange(0, 64) / 2.0;
    const double scale = data.ConsumeIntegralInRange(0, 12) / 4.0;
    const auto path = desktop.writeFile(data.ConsumeRemainingBytesAsString());
    const QImage icon = ApplicationIcon::picture(path, points, scale);
    const int side = qRound(points * scale);
    expect(icon.isNull() || icon.size() == QSize(side, side), "an icon has its size");
    expect(icon.isNull() || icon.devicePixelRatio() == scale, "an icon has its scale");
    return 0;
}
