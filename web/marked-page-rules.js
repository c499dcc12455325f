// Served behind marked. What would change the look of the rest of the page, lie over it, frame another or lead elsewhere is
// left out of the parsed text: a document writes its text, not the page.
{
  const parse = marked.parse;
  const names = ["style", "link", "meta", "base", "iframe", "frame", "frameset", "object", "embed", "applet", "portal",
    "noscript"];
  // The typesetter's own elements are in its style sheet, where some stand over the page.
  const isRefused = ({ localName }) => names.includes(localName) || localName.startsWith("mjx-");
  const start = `<(?=(?:${names.join("|")})(?![-\\w])|mjx-)`;
  const styleName = "([\\s/\"'])style(?=\\s*=)";
  const suspicious = new RegExp(`${start}|${styleName}`, "i");

  // With these an element leaves its place or covers others; with a negative margin it pulls others under itself.
  const leaving = new RegExp("^(-webkit-)?(position|transform|translate|rotate|scale|offset|perspective|will-change|z-index|" +
    "box-shadow|outline|filter|backdrop-filter|box-reflect)");
  const leaves = (name, value) => value === "" || leaving.test(name) || /^margin/.test(name) && /[-(]/.test(value);

  // Whether there was anything to take out.
  const restrain = element => {
    const { style } = element;
    if (!style) {
      const hasStyle = element.hasAttribute("style");
      element.removeAttribute("style");
      return hasStyle;
    }
    const refused = [...style].filter(name => leaves(name, style.getPropertyValue(name)));
    refused.forEach(name => style.removeProperty(name));
    return refused.length > 0;
  };
  const clean = root => {
    let isClean = true;
    for (const element of root.querySelectorAll("*")) {
      if (isRefused(element)) {
        element.remove();
        isClean = false;
      } else if (restrain(element)) {
        isClean = false;
      }
    }
    return isClean;
  };
  const withoutThem = html => {
    // In a page without scripts, which loads nothing. What is written anew may be read otherwise than it was built, so
    // it is read until there is nothing left to take out.
    const root = document.implementation.createHTMLDocument("").createElement("div");
    for (let pass = 0; pass < 4; ++pass) {
      root.innerHTML = html;
      if (clean(root)) return html;
      html = root.innerHTML;
    }
    return html.replace(new RegExp(start, "gi"), "&lt;").replace(new RegExp(styleName, "gi"), "$1data-style");
  };
  const parseWithout = (source, options) => {
    const html = parse(source, options);
    return suspicious.test(html) ? withoutThem(html) : html;
  };
  globalThis.marked = Object.create(marked, { parse: { value: parseWithout } }); // Its own members are read-only.
}
