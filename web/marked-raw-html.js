// Loaded after marked. An unclosed script, comment or text area would hide everything after it, so its tag is shown as
// text. Tags of scripts, links, metadata and bases are always shown as text, because they are useless in a document; see
// GitHub Flavored Markdown, 6.11.
{
  const parse = marked.parse;
  // Stands for "<" during parsing. Texts contain no noncharacters.
  const lessThan = "\uFDD0";
  const ends = { "<!--": "-->", "<?": "?>", "<![CDATA[": "]]>" };
  const tag = "style|textarea|title|xmp|iframe|noembed|noframes|noscript|template|select|datalist|object|video|audio|" +
    "canvas|dialog";
  const start = new RegExp(`(<!--|<\\?|<!\\[CDATA\\[)|<(?:/?(script|plaintext|link|meta|base)|(/?)(${tag}))(?![-\\w])`, "gi");

  const places = (text, isEscaped) => {
    const found = [];
    const open = new Map();
    const endless = new Set();
    let passed = 0;
    for (const match of text.matchAll(start)) {
      const [, sign, always, slash, name] = match;
      if (match.index < passed || isEscaped(match.index)) continue;
      if (sign) {
        const end = endless.has(sign) ? -1 : text.indexOf(ends[sign.toUpperCase()], match.index + 2);
        if (end < 0) {
          endless.add(sign);
          found.push(match.index);
        } else {
          passed = end;
        }
      } else if (always) {
        found.push(match.index);
      } else {
        const key = name.toLowerCase();
        if (!open.has(key)) open.set(key, []);
        if (slash) open.get(key).pop();
        else open.get(key).push(match.index);
      }
    }
    return found.concat(...open.values()).sort((a, b) => a - b);
  };
  const shown = (text, sign, isEscaped) => {
    let result = "";
    let copied = 0;
    for (const place of places(text, isEscaped)) {
      result += text.slice(copied, place) + sign;
      copied = place + 1;
    }
    return result + text.slice(copied);
  };
  const parseShown = (source, options) => {
    const html = parse(shown(source, lessThan, place => source[place - 1] === "\\"), options)
      .replaceAll(lessThan, "&lt;").replaceAll(encodeURI(lessThan), "%3C");
    return shown(html, "&lt;", () => false);
  };
  globalThis.marked = Object.create(marked, { parse: { value: parseShown } }); // Its own members are read-only.
}
