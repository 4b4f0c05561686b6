#include "platform/net/CurlTransfer.h"

#include "foundation/Text.h"
#include "platform/net/NetworkTrouble.h"
#include "platform/net/RequestHeaders.h"

#include <openssl/x509.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace morvex {

namespace {

/// Whether a status line is of class 1xx (RFC 9110, section 15.2).
bool isInterim(std::string_view statusLine) {
    return statusLine.substr(std::min(statusLine.find(' '), statusLine.size())).starts_with(" 1");
}

/// The prefix of log lines.
constexpr std::string_view httpLog = "HTTP";

std::unexpected<Error> refuse(CURLcode code) {
    return fail(networkError(httpLog, troubleOf(code), curl_easy_strerror(code)));
}

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

} // namespace

Result<void> CurlTransfer::prepare(const std::string& extraAuthorities) {
    easy_.reset(curl_easy_init());
    url_.reset(curl_url());
    if (!easy_ || !url_) return refuse(CURLE_OUT_OF_MEMORY);
    if (auto set = setAddress(); !set) return set;
    if (auto set = setHeaders(); !set) return set;
    setMethod();
    setRules(extraAuthorities);
    if (refused_ != CURLE_OK) return refuse(refused_);
    return {};
}

Result<void> CurlTransfer::setAddress() {
    // The library reads up to the first zero byte.
    auto code = request_.url.contains('\0')
                    ? CURLUE_MALFORMED_INPUT
                    : curl_url_set(url_.get(), CURLUPART_URL, request_.url.c_str(), CURLU_DISALLOW_USER);
    if (code != CURLUE_OK)
        return fail(networkError(httpLog, SystemTrouble::badAddress, curl_url_strerror(code)));
    set(CURLOPT_CURLU, url_.get());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    return {};
}

Result<void> CurlTransfer::setHeaders() {
    if (auto checked = checkHeaders(request_.headers); !checked) return checked;
    // Headers that the library would add by itself; a header of the request replaces them.
    addHeader("Expect:");
    addHeader("Content-Type:");
    for (const auto& [name, value] : request_.headers) {
        auto line = name;
        line += value.empty() ? ";" : ": ";
        line += value;
        addHeader(line);
    }
    set(CURLOPT_HTTPHEADER, headers_.get());
    return {};
}

void CurlTransfer::addHeader(const std::string& line) {
    auto* list = curl_slist_append(headers_.get(), line.c_str());
    if (!list) refused_ = CURLE_OUT_OF_MEMORY;
    if (!headers_) headers_.reset(list);
}

void CurlTransfer::setMethod() {
    if (!isToken(request_.method)) {
        refused_ = CURLE_BAD_FUNCTION_ARGUMENT;
        return;
    }
    if (request_.method == "HEAD") return set(CURLOPT_NOBODY, 1L);
    if (request_.method == "POST" || !request_.body.empty()) {
        set(CURLOPT_POST, 1L);
        set(CURLOPT_POSTFIELDS, request_.body.c_str());
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body.size()));
    }
    set(CURLOPT_CUSTOMREQUEST, request_.method.c_str());
}

void CurlTransfer::setRules(const std::string& extraAuthorities) {
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_FOLLOWLOCATION, 0L);
    set(CURLOPT_PROXY, "");
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, 2L);
    set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    // A name look-up that outlives its exchange must delay neither other exchanges nor the end of the
    // program.
    set(CURLOPT_QUICK_EXIT, 1L);
    // At least 1, since zero would mean no limit.
    set(CURLOPT_TIMEOUT_MS,
        static_cast<long>(std::max<std::chrono::milliseconds::rep>(request_.timeLimit.count(), 1)));
    set(CURLOPT_WRITEFUNCTION, &CurlTransfer::take);
    set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    set(CURLOPT_HEADERFUNCTION, &CurlTransfer::takeHeader);
    set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    set(CURLOPT_ERRORBUFFER, problem_.data());
    setAuthorities(extraAuthorities);
}

/// Uses the system's authorities. If the environment variables of the TLS library name other ones, those are
/// used: for WebSockets that library reads the variables itself, for libcurl it is done here.
void CurlTransfer::setAuthorities(const std::string& extra) {
    if (const auto file = variable(X509_get_default_cert_file_env()); !file.empty())
        set(CURLOPT_CAINFO, file.c_str());
    if (const auto folder = variable(X509_get_default_cert_dir_env()); !folder.empty())
        set(CURLOPT_CAPATH, folder.c_str());
    if (extra.empty()) return;
    curl_blob authorities{
        .data = const_cast<char*>(extra.data()), .len = extra.size(), .flags = CURL_BLOB_COPY};
    set(CURLOPT_CAINFO_BLOB, &authorities);
}

std::size_t CurlTransfer::take(const char* bytes, std::size_t one, std::size_t count, void* transfer) {
    auto& self = *static_cast<CurlTransfer*>(transfer);
    auto size = one * count;
    self.tooLong_ = size > self.request_.replyLimit - self.received_.body.size();
    if (self.tooLong_) return CURL_WRITEFUNC_ERROR;
    self.received_.body.append(bytes, size);
    return size;
}

std::size_t CurlTransfer::takeHeader(const char* bytes, std::size_t one, std::size_t count, void* transfer) {
    auto& self = *static_cast<CurlTransfer*>(transfer);
    const auto size = one * count;
    self.tooLong_ = !self.addReplyHeader({bytes, size});
    return self.tooLong_ ? CURL_WRITEFUNC_ERROR : size;
}

/// Takes one line with its end: a status line, a header or, after the body, a trailer. Returns false when the
/// headers are too long.
bool CurlTransfer::addReplyHeader(std::string_view line) {
    headersLength_ += line.size();
    if (headersLength_ > HttpReply::headersLimit) return false;
    if (headersAreOver_ && !isFinal_ && line.starts_with("HTTP/")) {
        // Headers of an interim answer are not part of the reply.
        received_.headers.clear();
        headersAreOver_ = false;
        isFinal_ = !isInterim(line);
        return true;
    }
    if (trim(line).empty()) headersAreOver_ = true;
    // A continuation line of another header (obs-fold, RFC 9112, section 5.2) has no name either.
    const auto name = line.substr(0, line.find(':'));
    if (!headersAreOver_ && name.size() < line.size() && isToken(name))
        received_.headers.emplace_back(name, trim(line.substr(name.size() + 1)));
    return true;
}

/// The server answered, but not in HTTP: the library reports such answers as an old or an unknown protocol.
bool CurlTransfer::answeredOtherwise(CURLcode code) const {
    if (code != CURLE_WEIRD_SERVER_REPLY && code != CURLE_UNSUPPORTED_PROTOCOL) return false;
    long connections = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_NUM_CONNECTS, &connections);
    return connections > 0;
}

NetworkError CurlTransfer::failure(CURLcode code) const {
    long number = 0;
    long verdict = X509_V_ERR_UNSPECIFIED;
    curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &number);
    curl_easy_getinfo(easy_.get(), CURLINFO_SSL_VERIFYRESULT, &verdict);
    auto trouble = troubleOf(code);
    if (code == CURLE_COULDNT_CONNECT && number != 0) trouble = troubleOfConnecting(static_cast<int>(number));
    if (code == CURLE_PEER_FAILED_VERIFICATION) trouble = certificateTrouble(verdict);
    return networkError(httpLog, trouble, problem_[0] ? problem_.data() : curl_easy_strerror(code));
}

void CurlTransfer::finish(CURLcode code) {
    if (tooLong_) return fall(NetworkError{"Odpověď serveru je příliš dlouhá."_sentence});
    if (answeredOtherwise(code)) return reply_(HttpReply{});
    if (code != CURLE_OK) return fall(failure(code));
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    received_.status = static_cast<int>(status);
    reply_(std::move(received_));
}

} // namespace morvex
