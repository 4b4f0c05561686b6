#pragma once

#include "foundation/Task.h"

#include <boost/json/object.hpp>

#include <memory>

namespace morvex {

class SecureLink;
struct FeatureContext;
struct MacStatus;

/// A subsystem that the companion carries without knowing it: files, agents, notes. In its constructor it
/// adds its tools to the table and its handlers to the inbox of the phone; the functions here tell it what
/// happens besides. Made after the companion and gone before it, but after the end of `Companion::ukoncit`.
/// Main thread only.
class Feature {
  public:
    virtual ~Feature() = default;
    Feature(const Feature&) = delete;
    Feature& operator=(const Feature&) = delete;

    /// Reads what the vault holds for it. The identity is there; the phone is not connected yet.
    virtual Task<void> load();

    /// Its part of what the phone is told of this computer.
    virtual void addTo(MacStatus&) const {}

    /// Its part of the answer of the tool `mac.status`, in which each key stands already, in its order.
    virtual void addTo(boost::json::object&) const {}

    /// A switch of the tool families has moved. The status goes out afterwards.
    virtual void switched() {}

    /// Looks again for what it needs from outside. The status goes out afterwards.
    virtual Task<void> refresh();

    /// The session is ready and the status was sent over this link: what the phone may have missed.
    virtual Task<void> catchUp(std::shared_ptr<SecureLink> link);

    /// Resumes when what the phone has told until now is dealt with; awaited before each call of the phone.
    virtual Task<void> settled();

    /// The computer falls asleep.
    virtual void sleep() {}

    /// The end of the program: nobody is asked any more. The tasks of the scope are stopped afterwards.
    virtual void stop() {}

    /// Nothing new comes any more. Resumes when all that is to be kept is saved, or could not be.
    virtual Task<void> saved();

  protected:
    explicit Feature(FeatureContext& context);
};

} // namespace morvex
