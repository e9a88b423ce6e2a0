// The entry of every test program of the user interface.

#include <array>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "framework/core/application.h"
#include "tests/ui/support/ui_test.h"

#include <X11/Xlib.h>

namespace {

int failOnXError(Display* connection, XErrorEvent* event) {
  std::array<char, 100> text = {};
  XGetErrorText(connection, event->error_code, text.data(), static_cast<int>(text.size()));
  ADD_FAILURE() << "X error: " << text.data() << ", request " << int{event->request_code};
  return 0;
}

/// Makes each failing test leave a picture of the screen at its first failure, and ends one that
/// stays in an event loop for longer than any test takes. Such loops also wake regularly, so that
/// no wait for an event is a long one.
class Guard : public testing::EmptyTestEventListener {
 public:
  void OnTestStart(const testing::TestInfo& started) override {
    constexpr Milliseconds kPeriod{2};
    constexpr Milliseconds kLongestTest{30000};
    picture = std::string(started.test_suite_name()) + "." + started.name() + ".png";
    ticker = std::make_unique<ui::Ticker>(kPeriod, [deadline = Deadline(kLongestTest)] {
      if (deadline.hasPassed()) {
        ui::endHangingTest("");
      }
    });
  }

  void OnTestPartResult(const testing::TestPartResult& result) override {
    if (result.failed() && !picture.empty()) {
      const std::string file = "ui-failures/" + std::exchange(picture, "");
      const int status =
          std::system(("mkdir -p ui-failures; import -window root '" + file + "'").c_str());
      std::cout << file << (status == 0 ? " shows the screen\n" : " cannot be made\n");
    }
  }

  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    ticker.reset();
    ui::drain();  // windows of its end do not meet the next one
  }

 private:
  std::string picture;  // of the running test, until it is taken
  std::unique_ptr<ui::Ticker> ticker;
};

}  // namespace

void ui::endHangingTest(const std::string& awaited) {
  std::string text = "hangs in an event loop, so this program ends here; awaited:\n" + awaited;
  for (const std::string& what : user().awaited()) {
    text += "\n  " + what;
  }
  ADD_FAILURE() << text;
  std::_Exit(EXIT_FAILURE);
}

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  // Lives as long as the process, as does the display: Motif keeps what it made for a connection
  // and would hand it out for the next one.
  static zApp application(argc, argv, "nelkvui");
  application.setName("nelkvui");
  XSetErrorHandler(failOnXError);
  testing::UnitTest::GetInstance()->listeners().Append(new Guard);
  return RUN_ALL_TESTS();
}
