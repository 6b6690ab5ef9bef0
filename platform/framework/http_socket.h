#ifndef PLATFORM_FRAMEWORK_HTTP_SOCKET_H_
#define PLATFORM_FRAMEWORK_HTTP_SOCKET_H_

#include "platform/framework/string.h"

namespace zephin {

/// A client for single HTTP requests. It sends no headers of its own and follows no redirects.
class HTTPSocket {
 public:
  virtual ~HTTPSocket() = default;

  /// Sends a GET request and returns the body as bytes without encoding. Events are processed
  /// meanwhile. The status of the response is ignored. Spaces, controls and letters outside of
  /// ASCII in the path are sent percent-encoded, as UTF-8; everything else is sent as it is.
  ///
  /// The request ends when the response is complete, when the connection fails, or after
  /// `timeoutSeconds` in which nothing has arrived (this limits silence, not the whole transfer).
  /// In each case the result is what has been received so far, possibly nothing. When memory runs
  /// short, the result is empty. Errors are not reported.
  String Get(const String& url, int timeoutSeconds);

 protected:
  enum class Security { Plain, TLS };
  virtual Security Kind() const { return Security::Plain; }
};

/// The same over TLS. Certificates are verified against the system's trust store; a certificate
/// that is not trusted counts as a failed connection.
class HTTPSecureSocket : public HTTPSocket {
 protected:
  Security Kind() const override { return Security::TLS; }
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_HTTP_SOCKET_H_
