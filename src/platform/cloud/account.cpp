#include "platform/cloud/account.h"

#include <libpq-fe.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <system_error>

#include "base/unicode_text.h"
#include "platform/cloud/lib_pq.h"

namespace brimlo {
namespace {

using Status = CloudDatabase::AccountStatus;

const std::string* find(const PostgresParameters& parameters, std::string_view keyword) {
  const auto found = std::find_if(parameters.begin(), parameters.end(),
                                  [&](const auto& given) { return given.first == keyword; });
  return found == parameters.end() ? nullptr : &found->second;
}

bool isThisMachine(std::string_view host) {
  return host.starts_with('/') || host.starts_with('@') || host == "localhost" ||
         host.starts_with("127.") || host == "::1";
}

/// Whether every host that the connection may go to is this machine. The line must say so itself:
/// what the environment or a service file adds is not known here.
bool staysHere(const PostgresParameters& parameters) {
  const std::string* address = find(parameters, "hostaddr");
  const std::string* hosts = address ? address : find(parameters, "host");
  if (!hosts) return false;
  for (std::size_t begin = 0; begin <= hosts->size();) {
    const std::size_t end = std::min(hosts->find(',', begin), hosts->size());
    if (!isThisMachine(std::string_view(*hosts).substr(begin, end - begin))) return false;
    begin = end + 1;
  }
  return true;
}

/// The keywords that the URI sets; or what is wrong with it.
std::variant<PostgresParameters, std::string> parse(const std::string& uri) {
  if (!LibPq::load()) return "libpq is not installed";
  char* fault = nullptr;
  const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(
      pq().PQconninfoParse(uri.c_str(), &fault), pq().PQconninfoFree);
  if (!options) {
    // The parser's message may quote the line, and the password in it.
    pq().PQfreemem(fault);
    return "its postgresql:// line cannot be understood";
  }
  PostgresParameters parameters;
  for (const auto* option = options.get(); option->keyword; ++option) {
    if (option->val) parameters.emplace_back(option->keyword, option->val);
  }
  return parameters;
}

}  // namespace

Account readAccount(const std::string& path) {
  const auto refused = [&path](Status status, const std::string& why) {
    return RefusedAccount{{status, path + ": " + why}};
  };
  struct stat file {};
  if (stat(path.c_str(), &file) != 0) {
    if (errno == ENOENT || errno == ENOTDIR) return EmbeddedAccount{};
    return refused(Status::kCouldNotDetermine, std::generic_category().message(errno));
  }
  std::ifstream content(path);
  std::string line;
  if (!S_ISREG(file.st_mode) || !std::getline(content, line)) {
    return refused(Status::kCouldNotDetermine, "there is no line in it that can be read");
  }
  line = trimmed(line, WhiteSpace::kWithNewlines);
  if (line == "none") return refused(Status::kNoAccount, "no account is wanted");
  if (!line.starts_with("postgresql://") && !line.starts_with("postgres://")) {
    return refused(Status::kCouldNotDetermine, "it holds neither a postgresql:// URI nor none");
  }
  auto parsed = parse(line);
  if (const auto* fault = std::get_if<std::string>(&parsed)) {
    return refused(Status::kCouldNotDetermine, *fault);
  }
  auto& parameters = std::get<PostgresParameters>(parsed);
  const bool secret = find(parameters, "password") || find(parameters, "sslpassword");
  if (secret && (file.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    return refused(Status::kRestricted, "it holds a password, and others may read it; chmod 600");
  }
  const std::string* mode = find(parameters, "sslmode");
  constexpr std::array kChosen = {"disable", "require", "verify-ca", "verify-full"};
  const bool chosen = mode && std::find(kChosen.begin(), kChosen.end(), *mode) != kChosen.end();
  if (!chosen && !staysHere(parameters)) {
    std::erase_if(parameters, [](const auto& given) { return given.first == "sslmode"; });
    parameters.emplace_back("sslmode", "require");
  }
  if (!find(parameters, "fallback_application_name")) {
    parameters.emplace_back("fallback_application_name", "brimlo");
  }
  return PostgresAccount{std::move(parameters)};
}

}  // namespace brimlo
