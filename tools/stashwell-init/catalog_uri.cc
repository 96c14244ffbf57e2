// Host and port of a PostgreSQL connection URI, by the URI's own syntax.
#include "tools/stashwell-init/catalog_uri.h"

#include <cstring>

bool ParseCatalogUri(const std::string& uri, CatalogServer* server) {
  size_t start = 0;
  for (const char* scheme : {"postgresql://", "postgres://"}) {
    if (uri.compare(0, strlen(scheme), scheme) == 0) start = strlen(scheme);
  }
  if (start == 0) return false;
  const std::string rest = uri.substr(start);
  std::string hosts = rest.substr(0, rest.find_first_of("/?"));
  hosts = hosts.substr(hosts.rfind('@') == std::string::npos ? 0 : hosts.rfind('@') + 1);
  std::string first = hosts.substr(0, hosts.find(','));
  std::string port;
  if (!first.empty() && first[0] == '[') {  // [IPv6 address]:port
    const size_t close = first.find(']');
    if (close == std::string::npos) return false;
    port = first.compare(close + 1, 1, ":") == 0 ? first.substr(close + 2) : "";
    first = first.substr(1, close - 1);
  } else if (first.find(':') != std::string::npos) {
    port = first.substr(first.find(':') + 1);
    first.resize(first.find(':'));
  }
  CatalogServer parsed;
  if (!first.empty()) parsed.host = first;
  if (!port.empty()) {
    if (port.size() > 5 || port.find_first_not_of("0123456789") != std::string::npos) return false;
    parsed.port = std::stoi(port);
    if (parsed.port < 1 || parsed.port > 65535) return false;
  }
  if (parsed.host.empty()) parsed.host = "localhost";
  *server = parsed;
  return true;
}
