// A frame into a QImage, whose lines are padded to four bytes.
#include <orvella/orvella.hpp>

#include <QImage>
#include <cstdio>
#include <vector>

int main() {
    const std::vector<unsigned char> frame(322 * 240 * 3 / 2, 0x55); // from your camera
    QImage image(322, 240, QImage::Format_RGB888);

    orvella::convert({frame, "BayerRG12p", {322, 240}}, {image.bits(),
                                                         static_cast<std::size_t>(image.sizeInBytes()),
                                                         orvella::Output::Rgb24,
                                                         {image.width(), image.height()},
                                                         image.bytesPerLine()});

    std::printf("pixel %06x, %d bytes for %d pixels\n", image.pixel(321, 239) & 0xFFFFFF, image.bytesPerLine(),
                image.width());
    return image.pixelColor(321, 239) == QColor(0x55, 0x55, 0x55) ? 0 : 1;
}
