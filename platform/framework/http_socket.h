#ifndef PLATFORM_FRAMEWORK_HTTP_SOCKET_H_
#define PLATFORM_FRAMEWORK_HTTP_SOCKET_H_

#include "platform/framework/string.h"

namespace zephin {

/// A client for one plain HTTP request. No header of its own, no redirect is followed.
class HTTPSocket {
 public:
  virtual ~HTTPSocket() = default;

  /// Sends a GET request and returns the body, as bytes without encoding: all that has arrived when
  /// the response was complete, the connection failed, or nothing has happened for `timeoutSeconds`
  /// (a limit on silence, not on the whole). Empty when nothing was received. Events run meanwhile.
  /// The status of the response is not looked at. Out of memory: as if the connection had failed,
  /// with an empty body.
  String Get(const String& url, int timeoutSeconds);

 protected:
  enum class Security { Plain, TLS };
  virtual Security Kind() const { return Security::Plain; }
};

/// The same over TLS. Certificates are checked against the system's trust store, and a failed check
/// is a failed connection.
class HTTPSecureSocket : public HTTPSocket {
 protected:
  Security Kind() const override { return Security::TLS; }
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_HTTP_SOCKET_H_
