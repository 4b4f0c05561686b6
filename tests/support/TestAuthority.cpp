#include "tests/support/TestAuthority.h"

#include "shared/base/Require.h"

#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/rsa.h>
#include <openssl/x509v3.h>

namespace morvex {

namespace {

void check(bool condition) {
    require(condition, "OpenSSL made no certificate");
}

template <class Write> std::string pem(Write write) {
    std::unique_ptr<BIO, decltype(&BIO_free)> memory(BIO_new(BIO_s_mem()), &BIO_free);
    check(write(memory.get()) == 1);
    char* data = nullptr;
    auto size = BIO_get_mem_data(memory.get(), &data);
    return {data, static_cast<std::size_t>(size)};
}

std::string pem(X509* certificate) {
    return pem([certificate](BIO* to) { return PEM_write_bio_X509(to, certificate); });
}

void addExtension(X509* certificate, int kind, const std::string& value) {
    std::unique_ptr<X509_EXTENSION, decltype(&X509_EXTENSION_free)> extension(
        X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str()), &X509_EXTENSION_free);
    check(extension && X509_add_ext(certificate, extension.get(), -1) == 1);
}

void name(X509_NAME* name, const std::string& commonName) {
    check(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                                     reinterpret_cast<const unsigned char*>(commonName.c_str()), -1, -1,
                                     0) == 1);
}

} // namespace

TestAuthority::TestAuthority()
    : key_(EVP_EC_gen("P-256")), certificate_(sign(key_.get(), key_.get(), "critical,CA:TRUE", {}, {})) {}

std::string TestAuthority::certificate() const {
    return pem(certificate_.get());
}

TestAuthority::Identity TestAuthority::issue(const std::string& names, Validity validity) const {
    Key key(EVP_EC_gen("P-256"));
    return identity(sign(key.get(), key_.get(), "critical,CA:FALSE", names, validity).get(), key.get());
}

TestAuthority::Identity TestAuthority::issueToItself(const std::string& names, KeyKind kind) {
    Key key(kind == KeyKind::rsa ? EVP_RSA_gen(2048) : EVP_EC_gen("P-256"));
    return identity(sign(key.get(), key.get(), "critical,CA:FALSE", names, {}).get(), key.get());
}

TestAuthority::Identity TestAuthority::identity(X509* certificate, EVP_PKEY* key) {
    return {pem(certificate), pem([key](BIO* to) {
                return PEM_write_bio_PrivateKey(to, key, nullptr, nullptr, 0, nullptr, nullptr);
            })};
}

TestAuthority::Certificate TestAuthority::sign(EVP_PKEY* subject, EVP_PKEY* issuer, const char* basic,
                                               const std::string& names, Validity validity) {
    Certificate made(X509_new());
    check(made && subject && X509_set_version(made.get(), X509_VERSION_3) == 1);
    ASN1_INTEGER_set(X509_get_serialNumber(made.get()), subject == issuer ? 1 : 2);
    X509_gmtime_adj(X509_getm_notBefore(made.get()), validity.begins.count());
    X509_gmtime_adj(X509_getm_notAfter(made.get()), validity.ends.count());
    name(X509_get_issuer_name(made.get()), "Test authority");
    name(X509_get_subject_name(made.get()), subject == issuer ? "Test authority" : "Test server");
    check(X509_set_pubkey(made.get(), subject) == 1);
    addExtension(made.get(), NID_basic_constraints, basic);
    if (!names.empty()) addExtension(made.get(), NID_subject_alt_name, names);
    check(X509_sign(made.get(), issuer, EVP_sha256()) > 0);
    return made;
}

} // namespace morvex
