#include "framework/draw/draw_message.h"

namespace {

ziDrawMessageSink theSink = nullptr;

}  // namespace

void setDrawMessageSink(ziDrawMessageSink sink) {
  theSink = sink;
}

void drawMessage(const std::string& text) {
  if (theSink != nullptr) {
    theSink(text);
  }
}
