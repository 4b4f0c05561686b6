// The kinds of servers. Each is a function that makes the handler of a node server's requests. They import what they need
// themselves, so that no kind waits for the packages of another.
const kinds = {
  // The reference server, as it is published: with sessions, answers as event streams.
  everything: async () => (await import("./everything.mjs")).handler(),

  // The first generation of the library: without sessions and with them.
  json: async () => (await import("./first.mjs")).withoutSessions({ enableJsonResponse: true }),
  stream: async () => (await import("./first.mjs")).withoutSessions({ enableJsonResponse: false }),
  sessions: async () => (await import("./first.mjs")).withSessions(),
  "sessions-pages": async () => (await import("./first.mjs")).withSessions({ pages: true }),

  // The second one, which also speaks the protocol without a handshake; the strict kinds refuse all others.
  second: async () => (await import("./second.mjs")).handler(),
  strict: async () => (await import("./second.mjs")).handler({ legacy: "reject" }),
  "strict-stream": async () => (await import("./second.mjs")).handler({ legacy: "reject", responseMode: "sse" }),
  "strict-pages": async () => (await import("./second.mjs")).handler({ legacy: "reject", pages: true }),
};

export { kinds };
