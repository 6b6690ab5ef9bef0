#ifndef PLATFORM_QT_PICTURE_IMAGE_H_
#define PLATFORM_QT_PICTURE_IMAGE_H_

#include <QImage>
#include <QSize>

#include "platform/framework/picture.h"
#include "platform/framework/ref.h"

namespace zephin {

/// The part of the picture, from its top left corner, that a place of that size can show; white is
/// clear if the picture is transparent. Null for nil and for nothing to show.
QImage ImageOf(const Ref<Picture>& picture, const QSize& place);

}  // namespace zephin

#endif  // PLATFORM_QT_PICTURE_IMAGE_H_
