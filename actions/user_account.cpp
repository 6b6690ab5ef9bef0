#include "actions/user_account.h"

#include "platform/framework/special_folder.h"
#include "platform/framework/text.h"
#include "util/text_search.h"

namespace zephin {

String UserHomePath() {
  return SpecialFolder::UserHome()->NativePath();
}

String WithUserAccount(const String& path) {
  return ViewConst::Pos(kUserAccountToken, path) == 1
             ? UserHomePath() + "/" + Mid(path, Len(kUserAccountToken) + 1)
             : path;
}

}  // namespace zephin
