#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <chrono>
#include <memory>
#include <string>

namespace morvex {

/// A certificate authority that lives as long as the test and issues certificates.
class TestAuthority {
  public:
    struct Identity {
        std::string certificate; ///< PEM
        std::string key;         ///< PEM
    };

    TestAuthority();

    /// The certificate that a client has to trust.
    [[nodiscard]] std::string certificate() const;

    /// The period of a certificate's validity, relative to now.
    struct Validity {
        std::chrono::seconds begins = -std::chrono::hours{1};
        std::chrono::seconds ends = std::chrono::hours{1};
    };

    /// `names`: a subjectAltName such as "DNS:localhost" or "IP:127.0.0.1".
    [[nodiscard]] Identity issue(const std::string& names) const { return issue(names, {}); }

    [[nodiscard]] Identity issue(const std::string& names, Validity validity) const;
    enum class KeyKind { ellipticCurve, rsa };

    /// A self-signed certificate.
    [[nodiscard]] static Identity issueToItself(const std::string& names,
                                                KeyKind kind = KeyKind::ellipticCurve);

  private:
    struct Free {
        void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }

        void operator()(X509* certificate) const { X509_free(certificate); }
    };

    using Key = std::unique_ptr<EVP_PKEY, Free>;
    using Certificate = std::unique_ptr<X509, Free>;

    static Certificate sign(EVP_PKEY* subject, EVP_PKEY* issuer, const char* basic, const std::string& names,
                            Validity validity);
    static Identity identity(X509* certificate, EVP_PKEY* key);

    Key key_;
    Certificate certificate_;
};

} // namespace morvex
