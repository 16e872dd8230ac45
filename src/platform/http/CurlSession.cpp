#include "platform/http/CurlSession.h"

#include <curl/curl.h>
#include <unistd.h>

#include <QUrl>
#include <algorithm>

#include "platform/SystemLog.h"
#include "platform/http/CurlTransfer.h"
#include "platform/http/ListenerOwner.h"

namespace tavin::http {
namespace {

std::uint16_t portOf(const UrlRequest& request) {
  return static_cast<std::uint16_t>(QUrl(request.url).port(80));
}

}  // namespace

CurlSession::CurlSession(SystemLog& log, std::optional<uid_t> user)
    : log_(log), user_(user.value_or(::geteuid())) {
  curl_global_init(CURL_GLOBAL_DEFAULT);
}

std::variant<UrlResponse, UrlError> CurlSession::dataTask(const UrlRequest& request) {
  // A connection to a port on which nobody listens may get that very port for its own end: then it
  // meets itself, and for a minute no engine can listen there.
  if (const auto owners = listenerOwners(portOf(request)); owners && owners->empty())
    return UrlError{UrlError::cannotConnectToHost};
  CurlTransfer transfer(request, maxAnswerSize, [&] { return peerIsEngine(request); });
  return transfer.run();
}

bool CurlSession::peerIsEngine(const UrlRequest& request) {
  const auto owners = listenerOwners(portOf(request));
  const bool foreign = owners && std::any_of(owners->begin(), owners->end(),
                                             [this](uid_t owner) { return owner != user_; });
  if (!foreignListener_.exchange(foreign) && foreign)
    log_.write(QStringLiteral("Tavin: the engine's port belongs to another user's program"));
  if (!ownerUnknown_.exchange(!owners) && !owners)
    log_.write(QStringLiteral("Tavin: the kernel does not tell who owns the engine's port"));
  return owners && !owners->empty() && !foreign;
}

}  // namespace tavin::http
