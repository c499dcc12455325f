// Loaded after marked and DOMPurify by the page that is copied: nothing that another program could run or load, except
// pictures, reaches the clipboard.
{
  const parse = marked.parse;
  // What Markdown and formulas give needs no cleaning, and large documents hold little else.
  const plainTags = "p|em|strong|del|code|pre|ul|ol|li|h[1-6]|blockquote|table|thead|tbody|tr|th|td|hr|br|a|img|input";
  const plainAttributes = String.raw`(?:href|src)="(?:(?:https?|file|mailto):[^"]*|[\w./%#?=-]*)"` +
    "|(?:alt|title|class|align|start|style|type|checked|disabled)=\"[^\"]*\"";
  const other = new RegExp(`<(?!/?(?:${plainTags})(?: (?:${plainAttributes}))*>)`);

  const active = "script,style,link,meta,base,title,iframe,frame,frameset,object,embed,applet,template,noscript,set,animate," +
    "video,audio,source,track";
  const addresses = ["href", "src", "xlink:href", "cite"];
  const loads = ({ localName, namespaceURI }, name, value) => /^(srcset|background|poster|lowsrc|dynsrc)$/.test(name) ||
    name === "src" && localName !== "img" ||
    name.endsWith("href") && namespaceURI.endsWith("/svg") && localName !== "a" && !value.startsWith("#");
  const isHarmful = (element, name, value) => /^(on|data-|form|action$|ping$)/.test(name) || loads(element, name, value) ||
    addresses.includes(name) && /^(javascript|vbscript|data:(?!image\/))/i.test(value.replace(/[\0-\x20]+/g, ""));
  const clean = root => {
    root.querySelectorAll(active).forEach(element => element.remove());
    root.querySelectorAll("form").forEach(form => form.replaceWith(...form.childNodes));
    for (const element of root.querySelectorAll("*"))
      for (const name of element.getAttributeNames())
        if (isHarmful(element, name, element.getAttribute(name))) element.removeAttribute(name);
  };

  // Pictures keep the addresses of local files.
  const allowedAddresses = /^(?:(?:https?|ftp|file|mailto|tel|cid):|[^a-z]|[a-z+.-]+(?:[^a-z+.\-:]|$))/i;
  const cleaned = html => {
    // In a page without scripts, which loads nothing.
    const root = document.implementation.createHTMLDocument("").body;
    root.innerHTML = html;
    clean(root);
    return DOMPurify.sanitize(root.innerHTML, { ALLOWED_URI_REGEXP: allowedAddresses });
  };
  const parseCleaned = (source, options) => {
    const html = parse(source, options);
    return other.test(html) ? cleaned(html) : html;
  };
  globalThis.marked = Object.create(marked, { parse: { value: parseCleaned } }); // Its own members are read-only.
}
