// Loaded after marked, in the preview. marked renders block by block and remembers the results, so that after an edit only
// the blocks that differ are read and rendered again. The page consists of parts: one block each, or several that an
// element reaches over. Each begins with a comment that no text can contain.
{
  const { Lexer, Parser, parse } = marked;
  const separator = "\uFDD1"; // Texts contain no noncharacters.
  const boundary = `<!--${separator}-->`;

  // Remembers the results of the previous pass. Each call begins a pass and returns the function to use in it.
  const remembering = compute => {
    let last = new Map();
    return () => {
      const before = last;
      const now = last = new Map();
      return key => {
        const result = now.get(key) ?? before.get(key) ?? compute(key);
        now.set(key, result);
        return result;
      };
    };
  };

  // marked first finds the blocks and the definitions of links, and then reads the text within each block.
  let links = "";
  let known = new Map();
  const lex = (source, options) => {
    const lexer = new Lexer(options);
    lexer.blockTokens(source.replace(/\r\n|\r/g, "\n"), lexer.tokens);
    const unread = new Map(lexer.inlineQueue.map(({ src, tokens }) => [tokens, src]));
    const read = ({ tokens = [], items = [], header = [], rows = [] }) => {
      if (unread.has(tokens)) {
        lexer.state.inRawBlock = false; // As marked does.
        lexer.inlineTokens(unread.get(tokens), tokens);
      } else {
        [...tokens, ...items, ...header, ...rows.flat()].forEach(read);
      }
    };
    const linksBefore = links;
    links = JSON.stringify(lexer.tokens.links);
    const before = links === linksBefore ? known : new Map();
    known = new Map();
    return lexer.tokens.map(token => {
      // An unclosed link reaches over the next blocks.
      const key = `${token.type} ${lexer.state.inLink} ${token.raw}`;
      let block = known.get(key) ?? before.get(key);
      if (!block) {
        read(token);
        block = { type: "tessaly-block", raw: token.raw, tokens: [token], inLink: lexer.state.inLink };
      }
      lexer.state.inLink = block.inLink;
      known.set(key, block);
      return block;
    });
  };
  const render = (blocks, options) => {
    let html = "";
    for (const block of blocks) {
      block.html ??= Parser.parse(block.tokens, options);
      block.tokens = [];
      if (block.html) html += separator + block.html;
    }
    return html;
  };
  marked.use({ hooks: { provideLexer: () => lex, provideParser: () => render } });

  // Whether nothing that the HTML opens reaches over what follows it. This document runs no scripts and loads nothing.
  const probe = document.implementation.createHTMLDocument("").createElement("div");
  const next = `x-${Math.random().toString(36).slice(2)}`;
  const isClosed = html => {
    probe.innerHTML = `${html}<${next}></${next}>`;
    const last = probe.lastChild;
    return last?.localName === next && !last.firstChild;
  };
  const closedPass = remembering(isClosed);
  const cleanPass = remembering(html => tessaly.withoutRefused(html));

  const closedParts = html => {
    const passIsClosed = closedPass();
    const parts = [];
    let open = "";
    let effort = 8 * html.length; // Elements that are never closed would otherwise take quadratic time.
    for (const block of html.split(separator)) {
      const mayClose = open === "" || /^\s*<\//.test(block);
      open += block;
      if (mayClose) effort -= open.length;
      if (open === "" || !mayClose || effort < 0 || !passIsClosed(open)) continue;
      parts.push(open);
      open = "";
    }
    return open ? [...parts, open] : parts;
  };
  const cleanParts = html => {
    const parts = closedParts(html);
    const clean = parts.map(cleanPass());
    const isWhole = clean.every((part, index) => part === parts[index] || isClosed(part));
    return isWhole ? clean : [tessaly.withoutRefused(parts.join(""))];
  };

  const parseBlocks = (source, options) => {
    const parts = cleanParts(parse(source, options));
    tessaly.shown = { source, options, parts };
    return parts.map(part => boundary + part).join("");
  };
  globalThis.marked = Object.create(marked, { parse: { value: parseBlocks } }); // Its own members are read-only.
  Object.assign(tessaly, { boundary: separator });
}
