#pragma once

#include "foundation/Clock.h"
#include "platform/ports/HttpClient.h"
#include "shared-apple/RelayAddress.h"
#include "shared/base/Sentence.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/DeviceRole.h"
#include "shared/wire/Identifiers.h"

#include <memory>
#include <string>

namespace morvex {

/// The HTTP calls that create, join and end a pair at the relay. Nothing is retried. Any thread may call;
/// `http` and `clock` must outlive the calls.
class RelayParovani {
  public:
    struct Zalozeni {
        PairID pairID;
        std::string pairingToken; ///< secret; only for the QR code
        Date platiDo;
    };

    /// The relay refused, or the other end did not answer in HTTP (`kod` 0).
    struct RelayChyba {
        int kod = 0; ///< HTTP status
        Sentence zprava;

        [[nodiscard]] Sentence popis() const { return zprava; }

        bool operator==(const RelayChyba&) const = default;
    };

    RelayParovani(HttpClient& http, const Clock& clock) : http_(http), clock_(clock) {}

    /// Creates a pair in which this device has `role`. All three calls fail with `RelayChyba`, `NetworkError`
    /// or a decode failure.
    Task<Result<Zalozeni>> zalozit(RelayAddress relayURL, std::shared_ptr<const DeviceIdentity> identita,
                                   DeviceRole role);
    Task<Result<PairID>> pripojit(RelayAddress relayURL, std::string pairingToken,
                                  std::shared_ptr<const DeviceIdentity> identita, DeviceRole role);
    /// Shuts `target` out of the pair, in the name of this device.
    Task<Result<void>> odvolat(RelayAddress relayURL, PairID pair, DeviceID target,
                               std::shared_ptr<const DeviceIdentity> identita);

  private:
    Task<Result<std::string>> post(std::string address, std::string body);

    HttpClient& http_;
    const Clock& clock_;
};

} // namespace morvex
