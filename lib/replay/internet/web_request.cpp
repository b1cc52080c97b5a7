#include "replay/internet/web_request.h"

#include "replay/internet/environment.h"
#include "replay/internet/http.h"
#include "replay/internet/transport.h"
#include "replay/text.h"

namespace replay::internet {
namespace {

constexpr std::int32_t status_ok = 200;

std::string query_of(const std::map<std::string, std::string>& parameters) {
  std::string query = "?";
  for (const auto& [name, value] : parameters) {
    if (query.size() != 1) query += '&';
    query.append(name).append("=");
    url_encode(value, query);
  }
  return query;
}

http::response response_to(const std::string& url) {
  try {
    return http::get(http::request(url));
  } catch (const http::aborted&) {
    throw WebRequest::WebRequestError(u"HTTP-error: Connection aborted.");
  } catch (const http::closed&) {
    throw WebRequest::WebRequestError(u"HTTP-error: Connection closed.");
  } catch (const http::invalid_response&) {
    throw WebRequest::WebRequestError(u"HTTP-error: Invalid response.");
  } catch (const address::generic&) {
    throw WebRequest::WebRequestError(u"HTTP-error: Could not resolve hostname.");
  } catch (const transport::generic&) {
    throw WebRequest::WebRequestError(u"HTTP-error: Connection failed.");
  }
}

}  // namespace

void WebRequest::execute() {
  const environment started;
  query = query_of(parameters);
  url = base_url + query;
  http::response response = response_to(url);
  if (response.status != status_ok) throw WebRequestError(u"Bad HTTP Response.");
  raw_body = std::move(response.body);
  body = raw_body;
  for (const char* const dropped : {"\r", "\n", "\t"}) replace_all(body, dropped, "");
}

std::string WebRequest::value(std::string_view path) const {
  std::string found;
  scan_value(body, path, found);
  return found;
}

}  // namespace replay::internet
