#pragma once

#include "app/agents/AgentsFeature.h"
#include "app/approvals/Schvalovani.h"
#include "app/companion/Companion.h"
#include "app/customapps/CustomAppsFeature.h"
#include "app/execution/FilesFeature.h"
#include "app/execution/TerminalFeature.h"
#include "app/features/FeatureContext.h"
#include "app/mail/MailFeature.h"
#include "app/organizer/OrganizerFeature.h"
#include "app/personal/RecordsFeature.h"
#include "app/programs/ProgramDiscovery.h"
#include "app/voice/VoiceFeature.h"
#include "app/websearch/WebSearchFeature.h"

namespace morvex {

/// What this program can do for the phone. One feature a line, in the order in which they are asked. Made
/// after the companion and destroyed before it.
struct Features {
    explicit Features(Companion& companion)
        : context(companion.context()),
          mail(context, [&approvals = companion.schvalovani()](MailApproval approval) {
              return approvals.pozadat(std::move(approval.tool), std::move(approval.title),
                                       std::move(approval.spoken), std::move(approval.detail));
          }) {}

    FeatureContext& context;
    ProgramDiscovery programs{context.services.processes,
                              context.clock(),
                              context.services.workers,
                              {context.services.environment, context.services.folders.accountHome()},
                              context.scope.token()};
    FilesFeature files{context};
    TerminalFeature terminal{context, files.slozky(), programs};
    AgentsFeature agents{context, files.slozky(), programs};
    RecordsFeature records{context};
    CustomAppsFeature customApps{context};
    VoiceFeature voice{context};
    WebSearchFeature webSearch{context, voice.controller()};
    OrganizerFeature organizer{context, [&controller = voice.controller()](std::optional<std::string> text) {
                                   return controller.resolvePlace(std::move(text));
                               }};
    MailFeature mail;
};

} // namespace morvex
