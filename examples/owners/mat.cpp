// A frame into a part of a cv::Mat, by pointer and stride.
#include <orvella/orvella.hpp>

#include <cstdio>
#include <opencv2/core.hpp>
#include <vector>

namespace {

orvella::Picture pictureIn(cv::Mat& mat, orvella::Output output) {
    return {mat.data,
            static_cast<std::size_t>(mat.dataend - mat.data),
            output,
            {mat.cols, mat.rows},
            static_cast<std::ptrdiff_t>(mat.step)};
}

} // namespace

int main() {
    const std::vector<unsigned char> frame(320 * 240, 90); // from your camera
    cv::Mat wall(480, 640, CV_8UC3, cv::Scalar::all(0));
    cv::Mat quarter = wall(cv::Rect(320, 240, 320, 240));

    orvella::convert({frame, "BayerRG8", {320, 240}}, pictureIn(quarter, orvella::Output::Bgr24));

    const cv::Scalar inside = cv::mean(quarter), all = cv::mean(wall);
    std::printf("mean of the quarter %g, of the wall %g\n", inside[1], all[1]);
    return inside == cv::Scalar(90, 90, 90) && all[1] == 22.5 ? 0 : 1;
}
