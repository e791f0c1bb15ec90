// Writes what stands at an https address to standard output: the part of the program that speaks to
// servers on the web. It runs for a moment, apart from what holds the person's texts, and keeps the
// libraries that it takes out of there too.
//
// usage: brimlo-fetch ADDRESS USER_AGENT
// Beside the system's authorities it trusts those in the file that SSL_CERT_FILE names.
// Ends with 0, or says why not on standard error and ends with one of `FetchStatus`.

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QUrl>
#include <cstdio>
#include <cstdlib>

#include "fetch/fetch_status.h"

using brimlo::FetchStatus;

namespace {

/// At once: the threads and the memory of the libraries go with the process.
[[noreturn]] void end(int status) {
  std::_Exit(std::fflush(stdout) == 0 ? status : static_cast<int>(FetchStatus::kUnreachable));
}

[[noreturn]] void end(FetchStatus status, const QString& reason) {
  std::fprintf(stderr, "%s\n", qUtf8Printable(reason));
  end(static_cast<int>(status));
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  if (argc != 3) {
    end(FetchStatus::kMisused, "usage: brimlo-fetch ADDRESS USER_AGENT");
  }
  QNetworkRequest request{QUrl(argv[1], QUrl::StrictMode)};
  if (request.url().scheme() != "https" || request.url().host().isEmpty()) {
    end(FetchStatus::kInsecure, "the address is not one of https");
  }
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::NoLessSafeRedirectPolicy);
  request.setRawHeader("User-Agent", argv[2]);
  if (const QString own = qEnvironmentVariable("SSL_CERT_FILE"); !own.isEmpty()) {
    QSslConfiguration trust = QSslConfiguration::defaultConfiguration();
    trust.addCaCertificates(own);
    request.setSslConfiguration(trust);
  }
  QNetworkAccessManager network;
  QNetworkReply* reply = network.get(request);
  qint64 written = 0;
  const auto pass = [&] {
    const QByteArray part = reply->readAll();
    written += part.size();
    if (written > brimlo::kMostFetched) end(FetchStatus::kTooLong, "the answer is too long");
    std::fwrite(part.constData(), 1, static_cast<std::size_t>(part.size()), stdout);
  };
  QObject::connect(reply, &QNetworkReply::readyRead, pass);
  QObject::connect(reply, &QNetworkReply::finished, [&] {
    const auto error = reply->error();
    if (error == QNetworkReply::NoError) end(0);
    const bool insecure = error == QNetworkReply::InsecureRedirectError;
    end(insecure ? FetchStatus::kInsecure : FetchStatus::kUnreachable, reply->errorString());
  });
  return QCoreApplication::exec();
}
