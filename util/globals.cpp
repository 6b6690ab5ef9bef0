#include "util/globals.h"

#include "platform/framework/text.h"

namespace zephin::ViewConst {

String gLineBreak;
String gCR;
Ref<Random> gRandom;
bool gPresentTopLeft = false;
bool gIgnoreTranslocationError = false;

void VkAppInit() {
  gLineBreak = Chr(10);
  gRandom = MakeRef<Random>();
}

}  // namespace zephin::ViewConst
