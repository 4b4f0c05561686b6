import { randomUUID } from "node:crypto";
import { Server } from "@modelcontextprotocol/sdk/server/index.js";
import { McpServer } from "@modelcontextprotocol/sdk/server/mcp.js";
import { StreamableHTTPServerTransport } from "@modelcontextprotocol/sdk/server/streamableHttp.js";
import { CallToolRequestSchema, ListToolsRequestSchema } from "@modelcontextprotocol/sdk/types.js";
import { call, page, register } from "./tools.mjs";

const identity = { name: "first", version: "1.0.0" };

function makeServer({ pages = false }) {
  if (!pages) return register(new McpServer(identity));
  const server = new Server(identity, { capabilities: { tools: {} } });
  server.setRequestHandler(ListToolsRequestSchema, ({ params }) => page(params?.cursor));
  server.setRequestHandler(CallToolRequestSchema, ({ params }) => call(params));
  return server;
}

/// Every request gets a server of its own, as the library wants it.
export function withoutSessions(options) {
  return async (request, response) => {
    const transport = new StreamableHTTPServerTransport({ sessionIdGenerator: undefined, ...options });
    await makeServer({}).connect(transport);
    await transport.handleRequest(request, response);
  };
}

function refuse(response, status, code, message) {
  response.writeHead(status, { "content-type": "application/json" });
  response.end(JSON.stringify({ jsonrpc: "2.0", error: { code, message }, id: null }));
}

/// Answers as the library's own example with sessions does. A request to /forget makes it forget all of them.
export function withSessions(options = {}) {
  const sessions = new Map();
  return async (request, response) => {
    if (request.url === "/forget") {
      sessions.clear();
      return response.writeHead(204).end();
    }
    const id = request.headers["mcp-session-id"];
    if (id && !sessions.has(id)) return refuse(response, 404, -32001, "Session not found");
    let transport = sessions.get(id);
    if (!transport) {
      transport = new StreamableHTTPServerTransport({
        sessionIdGenerator: randomUUID,
        onsessioninitialized: (made) => sessions.set(made, transport),
        onsessionclosed: (ended) => sessions.delete(ended),
      });
      await makeServer(options).connect(transport);
    }
    await transport.handleRequest(request, response);
  };
}
