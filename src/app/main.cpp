#include "app/app_main.h"
#include "framework/core/process_entry.h"

int main(int argc, char** argv) {
  return runProcess(argc, argv, appMain);
}
