import http from "node:http";

/// The reference server listens on every address without TLS as soon as its module is loaded. The application that it would
/// have listened with is handed out instead, for any path.
export async function handler() {
  // It tells each request. A test that reads only the port would leave the pipe full, and the server waiting.
  console.log = () => {};
  const createServer = http.createServer;
  const made = new Promise((resolve) => {
    http.createServer = (application) => {
      resolve(application);
      const unused = createServer(application);
      unused.listen = () => unused;
      return unused;
    };
  });
  await import("@modelcontextprotocol/server-everything/dist/transports/streamableHttp.js");
  http.createServer = createServer;
  const application = await made;
  return (request, response) => {
    request.url = "/mcp";
    application(request, response);
  };
}
