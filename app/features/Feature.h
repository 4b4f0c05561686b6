#pragma once

#include "foundation/Task.h"

#include <boost/json/object.hpp>

#include <memory>

namespace morvex {

class SecureLink;
struct FeatureContext;
struct MacStatus;

/// A subsystem that the companion runs without knowing what it is: files, agents, notes. Its constructor adds
/// its tools to the table and its handlers to the phone's inbox; the functions below tell it about other
/// events. Made after the companion; destroyed after the end of `Companion::shutDown` and before the
/// companion. Main thread only.
class Feature {
  public:
    virtual ~Feature() = default;
    Feature(const Feature&) = delete;
    Feature& operator=(const Feature&) = delete;

    /// Reads what the vault holds for this feature. The identity is loaded, but the phone is not connected
    /// yet.
    virtual Task<void> load();

    /// Learns what the first offer to the phone depends on, in a few seconds at most. The phone is connected
    /// afterwards; the keys are there, so nobody waits at the computer.
    virtual Task<void> prepare();

    /// Adds this feature's part of the status that the phone gets.
    virtual void addTo(MacStatus&) const {}

    /// Adds this feature's part of the answer of the tool `mac.status`. The object already has all keys in
    /// their order.
    virtual void addTo(boost::json::object&) const {}

    /// Called after a switch of the tool families has changed. The status is sent afterwards.
    virtual void switched() {}

    /// Looks again for what it needs from outside. The status is sent afterwards.
    virtual Task<void> refresh();

    /// Sends what the phone may have missed. The session is ready, and the status was sent over this link.
    virtual Task<void> catchUp(std::shared_ptr<SecureLink> link);

    /// Resumes when everything the phone has sent so far has been processed; awaited before each call of the
    /// phone.
    virtual Task<void> settled();

    /// Called before the computer falls asleep.
    virtual void sleep() {}

    /// For the end of the program: nobody is asked anything any more. The tasks of the scope are stopped
    /// afterwards.
    virtual void stop() {}

    /// Resumes when everything has been saved or could not be saved. No new work arrives any more.
    virtual Task<void> saved();

  protected:
    explicit Feature(FeatureContext& context);
};

} // namespace morvex
