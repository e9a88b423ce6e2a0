// A program to be debugged: it computes, runs away until somebody helps it, reads a line and ends
// with what it has computed. With an argument it runs away at once.

#include <sys/prctl.h>

#include <cstdio>

volatile int spinning = 1;

int placeOfSum(int left, int right);
int placeOfSpin();

int placeOfSum(int left, int right) {
  int sum = left + right;
  return sum;
}

int placeOfSpin() {
  int turns = 0;
  while (spinning != 0) {
  }
  return turns;
}

int main(int argc, char** /*argv*/) {
  prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
  if (argc > 1) {
    std::puts("spins");
    std::fflush(stdout);
    return placeOfSpin();
  }
  const int total = placeOfSum(2, 3);
  std::printf("total %d\n", total);
  std::fflush(stdout);
  placeOfSpin();
  char line[80] = "";
  if (std::fgets(line, sizeof line, stdin) != nullptr) {
    std::printf("read %s", line);
  }
  return total;
}
