// Run in the page that is copied, behind DOMPurify, when every element carries its own look: what a program could run or
// load, but for pictures, and what the tools have left, does not go on the clipboard.
{
  const root = document.getElementById("content");
  const active = "script,style,link,meta,base,title,iframe,frame,frameset,object,embed,applet,template,noscript,set,animate," +
    "video,audio,source,track";
  const addresses = ["href", "src", "xlink:href", "cite"];
  root.querySelectorAll(active).forEach(element => element.remove());
  root.querySelectorAll("form").forEach(form => form.replaceWith(...form.childNodes));
  const loads = ({ localName, namespaceURI }, name, value) => /^(srcset|background|poster|lowsrc|dynsrc)$/.test(name) ||
    name === "src" && localName !== "img" ||
    name.endsWith("href") && namespaceURI.endsWith("/svg") && localName !== "a" && !value.startsWith("#");
  const isHarmful = (element, name, value) => /^(on|data-|form|action$|ping$)/.test(name) || loads(element, name, value) ||
    addresses.includes(name) && /^(javascript|vbscript|data:(?!image\/))/i.test(value.replace(/[\0-\x20]+/g, ""));
  for (const element of root.querySelectorAll("*"))
    for (const name of element.getAttributeNames())
      if (isHarmful(element, name, element.getAttribute(name))) element.removeAttribute(name);

  // A second wall, kept by others. Pictures keep the addresses of local files.
  DOMPurify.sanitize(root, { IN_PLACE: true, ALLOWED_URI_REGEXP: /^(?:(?:https?|ftp|file|mailto|tel|cid):|[^a-z]|[a-z+.-]+(?:[^a-z+.\-:]|$))/i });
}
