// The tools of the servers here, which are the same for each.
import * as z from "zod";

const text = (value) => ({ content: [{ type: "text", text: value }] });

/// Registers the tools of a server that lists them all at once.
export function register(server) {
  server.registerTool(
    "echo",
    { description: "Says again what it was told", inputSchema: z.object({ text: z.string() }) },
    ({ text: told }) => text(told),
  );
  server.registerTool(
    "sum",
    {
      description: "Adds two numbers",
      inputSchema: z.object({ a: z.number(), b: z.number() }),
      outputSchema: z.object({ sum: z.number() }),
    },
    ({ a, b }) => ({ ...text(String(a + b)), structuredContent: { sum: a + b } }),
  );
  server.registerTool("fail", { description: "Always fails" }, () => {
    throw new Error("it was asked to fail");
  });
  return server;
}

const listed = ["one", "two", "three", "four", "five"].map((name) => ({
  name,
  description: `Answers ${name}`,
  inputSchema: { type: "object", properties: {} },
}));

/// Two of five tools, and a cursor if there are more.
export function page(cursor = "0") {
  const begin = Number(cursor);
  const end = begin + 2;
  return { tools: listed.slice(begin, end), ...(end < listed.length && { nextCursor: String(end) }) };
}

export function call({ name }) {
  return text(name);
}
