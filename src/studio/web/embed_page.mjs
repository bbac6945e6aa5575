// Builds the studio's page into C++: index.html with the style sheet and the
// bundled script put inline, as one raw string literal kStudioPage.
//   node embed_page.mjs INDEX.html STYLE.css APP.js OUT.cpp
import { readFileSync, writeFileSync, renameSync } from "node:fs";

const [indexPath, stylePath, scriptPath, outPath] = process.argv.slice(2);
const script = readFileSync(scriptPath, "utf8");
const style = readFileSync(stylePath, "utf8");
if (/<\/script/i.test(script)) throw new Error("the bundle holds </script and cannot be put inline");
const page = readFileSync(indexPath, "utf8")
  .replace("/*STYLE*/", () => style)
  .replace("/*SCRIPT*/", () => script);
const delimiter = "FXPAGE";
if (page.includes(`)${delimiter}"`)) throw new Error("the page holds the literal's delimiter");
// GCC and Clang take long raw strings; the page is cut into pieces that
// stay below the 64 KiB that some compilers allow for one literal.
const pieces = [];
for (let i = 0; i < page.length; i += 16000) pieces.push(page.slice(i, i + 16000));
const body = pieces.map((piece) => `R"${delimiter}(${piece})${delimiter}"`).join("\n");
const text = `// Generated from src/studio/web by embed_page.mjs at build time. Do not edit.
#include "studio/studio_page.h"

namespace fx::studio {

const char kStudioPage[] =
${body};

}  // namespace fx::studio
`;
writeFileSync(`${outPath}.tmp`, text);
renameSync(`${outPath}.tmp`, outPath);
