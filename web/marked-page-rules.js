// Served behind marked. What would change the look of the rest of the page, frame another or lead elsewhere is left out
// of the parsed text: a document writes its text, not the page.
{
  const parse = marked.parse;
  const names = "style,link,meta,base,iframe,frame,frameset,object,embed,applet,portal,noscript";
  const start = new RegExp(`<(${names.replaceAll(",", "|")})(?![-\\w])`, "i");

  const withoutThem = html => {
    // In a page without scripts, which loads nothing. What is written anew may be read otherwise than it was built, so
    // it is read until there is nothing left to take out.
    const root = document.implementation.createHTMLDocument("").createElement("div");
    for (let pass = 0; pass < 4; ++pass) {
      root.innerHTML = html;
      const found = root.querySelectorAll(names);
      if (found.length === 0) return html;
      found.forEach(element => element.remove());
      html = root.innerHTML;
    }
    return html.replace(new RegExp(start, "gi"), "&lt;$1");
  };
  const parseWithout = (source, options) => {
    const html = parse(source, options);
    return start.test(html) ? withoutThem(html) : html;
  };
  globalThis.marked = Object.create(marked, { parse: { value: parseWithout } }); // Its own members are read-only.
}
