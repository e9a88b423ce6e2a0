#include "tests/ui/support/screenshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "tests/ui/support/test_application.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace ui {

namespace {

constexpr unsigned long kByte = 0xff;
constexpr int kColourBytes = 3;

struct ImageDeleter {
  void operator()(XImage* image) const { XDestroyImage(image); }
};
using Image = std::unique_ptr<XImage, ImageDeleter>;

/// One colour of a pixel of a TrueColor visual, 8 bits, of a mask of any 8 adjacent bits.
char component(unsigned long pixel, unsigned long mask) {
  while (mask > kByte) {
    mask >>= 1U;
    pixel >>= 1U;
  }
  return static_cast<char>(pixel & mask);
}

Image grabScreen() {
  Display* const connection = display();
  const int screen = DefaultScreen(connection);
  return Image(XGetImage(connection, RootWindow(connection, screen), 0, 0,
                         static_cast<unsigned>(DisplayWidth(connection, screen)),
                         static_cast<unsigned>(DisplayHeight(connection, screen)), AllPlanes,
                         ZPixmap));
}

class FailurePictures : public testing::EmptyTestEventListener {
 public:
  void OnTestStart(const testing::TestInfo& started) override {
    test = &started;
    isTaken = false;
  }

  void OnTestPartResult(const testing::TestPartResult& result) override {
    if (!result.failed() || isTaken || test == nullptr) {
      return;
    }
    isTaken = true;
    std::string name = std::string(test->test_suite_name()) + "." + test->name() + ".ppm";
    std::replace(name.begin(), name.end(), '/', '_');
    const std::filesystem::path file = std::filesystem::path("ui-failures") / name;
    if (writeScreenshot(file)) {
      std::cout << "picture of the screen: " << std::filesystem::absolute(file).string() << "\n";
    }
  }

 private:
  // Kept from the start: while a result is being reported the library's own answer would deadlock.
  const testing::TestInfo* test = nullptr;
  bool isTaken = false;
};

}  // namespace

bool writeScreenshot(const std::filesystem::path& file) {
  std::error_code error;
  if (file.has_parent_path()) {
    std::filesystem::create_directories(file.parent_path(), error);
  }
  const Image image = grabScreen();
  if (image == nullptr) {
    return false;
  }
  std::string pixels;
  pixels.reserve(static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) *
                 kColourBytes);
  for (int y = 0; y < image->height; ++y) {
    for (int x = 0; x < image->width; ++x) {
      const unsigned long pixel = XGetPixel(image.get(), x, y);
      for (const unsigned long mask : {image->red_mask, image->green_mask, image->blue_mask}) {
        pixels += component(pixel, mask);
      }
    }
  }
  std::ofstream out(file, std::ios::binary);
  out << "P6\n" << image->width << " " << image->height << "\n255\n" << pixels;
  return out.good();
}

void takePicturesOfFailures() {
  testing::UnitTest::GetInstance()->listeners().Append(new FailurePictures);
}

}  // namespace ui
