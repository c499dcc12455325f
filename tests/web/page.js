// The scripts of web/ as the pages load them.
"use strict";
const fs = require("node:fs");
const path = require("node:path");
const vm = require("node:vm");

const own = path.join(__dirname, "../../web");
const packages = process.env.NODE_PATH;

/// Runs scripts one after the other in a global object of their own, which it returns.
const run = (files, globals = {}) => {
  const context = vm.createContext(globals);
  for (const file of files) vm.runInContext(fs.readFileSync(file, "utf8"), context, { filename: file });
  return context;
};

/// marked with scripts of ours behind it.
const markedWith = (...names) =>
  run([path.join(packages, "marked/lib/marked.umd.js"), ...names.map(name => path.join(own, name))]).marked;

const options = { gfm: true, breaks: true };

module.exports = { markedWith, options, own, packages, run };
