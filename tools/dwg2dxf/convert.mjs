// Converts a DWG drawing to an ASCII DXF of the DWG's own version, for the
// headless host to read with its own database.
//
//   node convert.mjs IN.dwg OUT.dxf
//
// Exit status 0 when OUT.dxf was written (whole: it is written beside OUT and
// renamed), 1 when IN cannot be converted (a plain message on stderr, nothing
// written), 2 for a wrong command line. Facts about the conversion go to
// stderr, one JSON object a line:
//   {"version":"AC1018","release":"R2004"}
//   {"layers":12,"off":3,"corrected":12}      layers whose on/off state was written back
//   {"dropped":"ACAD_TABLE","count":2}        entities of the DWG the DXF lacks
//   {"entities":1234,"seconds":0.61}
// A failure is one plain line "dwg2dxf: MESSAGE" (exit status 1).
//
// Corrections made to LibreDWG's DXF:
//  - every layer comes out off (negative group 62): the decoded flag of each
//    layer, matched by handle, gives the state to write;
//  - group 1070 (a 16-bit integer) comes out unsigned: values above 32767
//    are written as the signed values they are.
import fs from 'node:fs';
import path from 'node:path';
import v8 from 'node:v8';
import { fileURLToPath } from 'node:url';

// V8's optimising WebAssembly compiler takes ~10 s and 800 MB on LibreDWG's
// module; the baseline compiler alone converts a small drawing in well under
// a second with the same output. Must be set before the module loads.
v8.setFlagsFromString('--liftoff-only');
v8.setFlagsFromString('--no-wasm-tier-up');

const here = path.dirname(fileURLToPath(import.meta.url));
const packageDir = path.join(here, 'node_modules', '@mlightcad', 'libredwg-web');

const RELEASES = {
  AC1012: 'R13', AC1014: 'R14', AC1015: 'R2000', AC1018: 'R2004',
  AC1021: 'R2007', AC1024: 'R2010', AC1027: 'R2013', AC1032: 'R2018',
};
const DWG_TYPE_LAYER = 51;
const SUPERTYPE_ENTITY = 0;

function report(fact) {
  process.stderr.write(JSON.stringify(fact) + '\n');
}

class ConvertError extends Error {}

// The DWG's version from its first six bytes, or throws.
function dwgVersion(bytes) {
  const magic = bytes.subarray(0, 6).toString('latin1');
  if (!/^AC10\d\d$/.test(magic)) throw new ConvertError('not a DWG drawing (no AC10xx signature)');
  if (!(magic in RELEASES)) {
    throw new ConvertError(`DWG version ${magic} is not supported (R13 to R2018: AC1012 to AC1032)`);
  }
  return magic;
}

// Splits ASCII DXF text into [code, value] pairs, keeping the line ending.
function parsePairs(text) {
  const eol = text.includes('\r\n') ? '\r\n' : '\n';
  const lines = text.split(eol);
  if (lines.length && lines[lines.length - 1] === '') lines.pop();
  const pairs = [];
  for (let i = 0; i + 1 < lines.length; i += 2) pairs.push([lines[i], lines[i + 1]]);
  if (lines.length % 2) throw new ConvertError('the DXF written by LibreDWG is truncated');
  return { pairs, eol };
}

// What LibreDWG's reader decoded: layer on/off by handle and entity counts by DXF name.
function decodedFacts(lib, bytes) {
  const data = lib.dwg_read_data(bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.length), 0);
  if (!data) throw new ConvertError('LibreDWG cannot read the drawing');
  const layerOff = new Map();
  const entities = new Map();
  try {
    const count = lib.dwg_get_num_objects(data);
    for (let i = 0; i < count; i++) {
      const obj = lib.dwg_get_object(data, i);
      if (!obj) continue;
      if (lib.dwg_object_get_supertype(obj) === SUPERTYPE_ENTITY) {
        const name = lib.dwg_object_get_dxfname(obj);
        if (name) entities.set(name, (entities.get(name) ?? 0) + 1);
        continue;
      }
      if (lib.dwg_object_get_fixedtype(obj) !== DWG_TYPE_LAYER) continue;
      const tio = lib.dwg_object_to_object_tio(obj);
      if (!tio) continue;
      const handle = lib.dwg_object_get_handle_object(obj).value.toString(16).toUpperCase();
      layerOff.set(handle, Boolean(lib.dwg_dynapi_entity_data(tio, 'off')));
    }
  } finally {
    lib.dwg_free(data);
  }
  return { layerOff, entities };
}

// Applies the corrections to the DXF pairs; returns facts about them.
function correct(pairs, layerOff) {
  let section = '';
  let layers = 0, off = 0, corrected = 0;
  const written = new Map();
  for (let i = 0; i < pairs.length; i++) {
    const [rawCode, value] = pairs[i];
    const code = rawCode.trim();
    if (code === '0' && value === 'SECTION' && i + 1 < pairs.length) section = pairs[i + 1][1];
    if (code === '1070') {
      const n = Number(value.trim());
      if (Number.isInteger(n) && n > 32767 && n <= 65535) pairs[i][1] = String(n - 65536).padStart(6);
    }
    if (code === '0' && section === 'ENTITIES' || code === '0' && section === 'BLOCKS') {
      written.set(value, (written.get(value) ?? 0) + 1);
    }
    if (code !== '0' || value !== 'LAYER' || section !== 'TABLES') continue;
    // One LAYER record: find its handle and its colour.
    let handle = null, colour = -1;
    let j = i + 1;
    for (; j < pairs.length && pairs[j][0].trim() !== '0'; j++) {
      const c = pairs[j][0].trim();
      if (c === '5' && handle === null) handle = pairs[j][1].trim().toUpperCase();
      if (c === '62' && colour < 0) colour = j;
    }
    layers++;
    if (handle === null || colour < 0 || !layerOff.has(handle)) continue;
    const isOff = layerOff.get(handle);
    const index = Math.abs(Number(pairs[colour][1].trim())) || 7;
    const wanted = String(isOff ? -index : index).padStart(6);
    if (pairs[colour][1] !== wanted) corrected++;
    pairs[colour][1] = wanted;
    if (isOff) off++;
    i = j - 1;
  }
  return { layers, off, corrected, written };
}

// LibreDWG names the kinds of some entities (DIMENSION_LINEAR, POLYLINE_PFACE,
// VERTEX_3D...); the DXF has one entity type for each family.
function dxfEntityName(name) {
  const family = /^(DIMENSION|POLYLINE|VERTEX)_/.exec(name);
  return family ? family[1] : name;
}

async function main(argv) {
  if (argv.length !== 2) {
    process.stderr.write('usage: node convert.mjs IN.dwg OUT.dxf\n');
    return 2;
  }
  const [input, output] = argv;
  const started = process.hrtime.bigint();
  let bytes;
  try {
    bytes = fs.readFileSync(input);
  } catch (e) {
    throw new ConvertError(`cannot read ${input}: ${e.code ?? e.message}`);
  }
  const version = dwgVersion(bytes);
  report({ version, release: RELEASES[version] });

  const { LibreDwg } = await import(path.join(packageDir, 'dist', 'libredwg-web.js'));
  const lib = await LibreDwg.create(path.join(packageDir, 'wasm'));
  // LibreDWG's wrapper prints its own errors on stdout: keep stdout clean.
  console.log = (...args) => process.stderr.write(JSON.stringify({ libredwg: args.join(' ') }) + '\n');
  console.warn = console.log;

  let dxf;
  try {
    dxf = lib.dwg_write_dxf(bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.length));
  } catch (e) {
    throw new ConvertError(`LibreDWG failed on the drawing: ${e.message ?? e}`);
  }
  if (!dxf || dxf.length === 0) throw new ConvertError('LibreDWG could not convert the drawing');
  let facts;
  try {
    facts = decodedFacts(lib, bytes);
  } catch (e) {
    if (e instanceof ConvertError) throw e;
    throw new ConvertError(`LibreDWG failed reading the drawing's layers: ${e.message ?? e}`);
  }

  // latin1 keeps every byte: files up to R2004 are in the DWG's code page.
  const { pairs, eol } = parsePairs(Buffer.from(dxf).toString('latin1'));
  if (!pairs.some(([c, v]) => c.trim() === '0' && v === 'EOF')) {
    throw new ConvertError('the DXF written by LibreDWG has no EOF');
  }
  const { layers, off, corrected, written } = correct(pairs, facts.layerOff);
  report({ layers, off, corrected });

  const decoded = new Map();
  for (const [name, count] of facts.entities) {
    const dxfName = dxfEntityName(name);
    decoded.set(dxfName, (decoded.get(dxfName) ?? 0) + count);
  }
  let total = 0;
  for (const count of written.values()) total += count;
  for (const [name, count] of [...decoded].sort()) {
    const lacking = count - (written.get(name) ?? 0);
    if (lacking > 0 && name !== 'BLOCK' && name !== 'ENDBLK') report({ dropped: name, count: lacking });
  }

  const text = pairs.map(([c, v]) => c + eol + v + eol).join('');
  const temporary = `${output}.${process.pid}.part`;
  try {
    fs.writeFileSync(temporary, Buffer.from(text, 'latin1'), { mode: 0o644 });
    fs.renameSync(temporary, output);
  } catch (e) {
    try { fs.unlinkSync(temporary); } catch {}
    throw new ConvertError(`cannot write ${output}: ${e.code ?? e.message}`);
  }
  const seconds = Number(process.hrtime.bigint() - started) / 1e9;
  report({ entities: total, seconds: Math.round(seconds * 100) / 100 });
  return 0;
}

main(process.argv.slice(2)).then(
  (status) => process.exit(status),
  (e) => {
    const message = e instanceof ConvertError ? e.message : `unexpected failure: ${e?.message ?? e}`;
    process.stderr.write(`dwg2dxf: ${message}\n`);
    process.exit(1);
  });
