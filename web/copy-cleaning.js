// Run in the page that is copied, when every element carries its own look: what a program could run or load, and what the
// tools have left, does not go on the clipboard.
{
  const root = document.getElementById("content");
  const active = "script,style,link,meta,base,title,iframe,frame,frameset,object,embed,applet,template,noscript,set,animate";
  const addresses = ["href", "src", "xlink:href", "cite", "poster", "background"];
  root.querySelectorAll(active).forEach(element => element.remove());
  root.querySelectorAll("form").forEach(form => form.replaceWith(...form.childNodes));
  const isHarmful = (name, value) => /^(on|data-|form|action$|ping$)/.test(name) || addresses.includes(name) &&
    /^(javascript|vbscript|data:(?!image\/))/i.test(value.replace(/[\0-\x20]+/g, ""));
  for (const element of root.querySelectorAll("*"))
    for (const name of element.getAttributeNames())
      if (isHarmful(name, element.getAttribute(name))) element.removeAttribute(name);
}
