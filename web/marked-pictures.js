// Loaded after marked, whose regular expressions overflow on addresses of several megabytes. Replaces embedded pictures
// with short addresses during parsing.
{
  const parse = marked.parse;
  const start = "data:image/";
  const shortest = 4096;
  const isPlain = code => // Base64, or the part of the address before it
    (code >= 48 && code <= 57) || (code >= 65 && code <= 90) || (code >= 97 && code <= 122) ||
    code === 43 || code === 44 || code === 47 || code === 59 || code === 61;

  const parseAround = (source, options) => {
    const pictures = [];
    let text = "";
    let copied = 0;
    for (let at = source.indexOf(start); at >= 0; at = source.indexOf(start, at)) {
      let end = at + start.length;
      while (end < source.length && isPlain(source.charCodeAt(end))) ++end;
      if (end - at >= shortest) {
        text += source.slice(copied, at) + `data:picture-aside,${pictures.length}.`;
        pictures.push(source.slice(at, end));
        copied = end;
      }
      at = end;
    }
    const html = parse(text + source.slice(copied), options);
    return html.replace(/data:picture-aside,(\d+)\./g, (whole, index) => pictures[index] ?? whole);
  };
  globalThis.marked = Object.create(marked, { parse: { value: parseAround } }); // Its own members are read-only.
}
