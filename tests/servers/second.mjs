import { toNodeHandler } from "@modelcontextprotocol/node";
import { createMcpHandler, McpServer, Server } from "@modelcontextprotocol/server";
import { call, page, register } from "./tools.mjs";

const identity = { name: "second", version: "1.0.0" };

function makeServer(pages) {
  if (!pages) return register(new McpServer(identity));
  const server = new Server(identity, { capabilities: { tools: {} } });
  server.setRequestHandler("tools/list", ({ params }) => page(params?.cursor));
  server.setRequestHandler("tools/call", ({ params }) => call(params));
  return server;
}

export function handler({ pages = false, ...options } = {}) {
  return toNodeHandler(createMcpHandler(() => makeServer(pages), options));
}
