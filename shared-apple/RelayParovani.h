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

/// The calls over HTTP that make, join and end a pair at the relay. Nothing is tried again here.
/// Any thread may call; `http` and `clock` outlive the calls.
class RelayParovani {
  public:
    struct Zalozeni {
        PairID pairID;
        std::string pairingToken; ///< secret: for the QR code alone
        Date platiDo;
    };

    /// The relay refused, or did not speak HTTP (`kod` 0).
    struct RelayChyba {
        int kod = 0; ///< HTTP status
        Sentence zprava;

        [[nodiscard]] Sentence popis() const { return zprava; }

        bool operator==(const RelayChyba&) const = default;
    };

    RelayParovani(HttpClient& http, const Clock& clock) : http_(http), clock_(clock) {}

    /// Makes a pair in which this device has `role`. Fails with `RelayChyba`, `NetworkError` or a decode
    /// failure; so do the others.
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
