// node serve.mjs KIND CERTIFICATE KEY [PORT]
// Serves one kind of MCP server over TLS on 127.0.0.1, at every path, with the certificate and key of these PEM files, and
// prints "listening on PORT". Without a port, or with 0, it takes a free one. The list of kinds is in kinds.mjs.
import { readFileSync } from "node:fs";
import https from "node:https";
import { kinds } from "./kinds.mjs";

const [kind, certificate, key, port = "0"] = process.argv.slice(2);
if (!(kind in kinds) || !key) {
  console.error(`usage: node serve.mjs KIND CERTIFICATE KEY [PORT]\nkinds: ${Object.keys(kinds).join(" ")}`);
  process.exit(2);
}

const server = https.createServer(
  { cert: readFileSync(certificate), key: readFileSync(key) },
  await kinds[kind](),
);
server.on("error", (error) => {
  console.error(error.message);
  process.exit(1);
});
server.listen(Number(port), "127.0.0.1", () => process.stdout.write(`listening on ${server.address().port}\n`));
