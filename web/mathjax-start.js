// Served in front of MathJax.
{
  // Up to so many formulas are typeset before the page shows. Each takes some milliseconds and tens of kilobytes; of
  // more than these, those in view come first and the others when they come near.
  const eager = 300;
  const slice = 40;
  // In pixels. Formulas do not break; a longer one within a line scrolls in itself where the line is too short for it.
  const longFormula = 300;

  let typeset = null;
  let last = Promise.resolve();
  const waiting = new Set();
  const near = new Set();

  // The typesetter itself places things by its style sheet; what \style says would lift a formula over the page.
  const keepInPlace = element => {
    for (const { style } of element.querySelectorAll("mjx-container [style*=position]"))
      if (style.position !== "relative") style.removeProperty("position");
  };

  const typesetSome = elements => last = last.then(async () => {
    await typeset(elements).catch(() => {});
    MathJax.startup.document.clear(); // What it keeps of each formula is for its menu.
    elements.forEach(keepInPlace);
    const long = elements.flatMap(element => [...element.querySelectorAll("mjx-container:not([display])")])
      .filter(formula => formula.offsetWidth > longFormula);
    long.forEach(formula => formula.classList.add("long"));
  });

  const typesetWaiting = async elements => {
    const some = elements.filter(element => waiting.delete(element));
    some.forEach(element => (near.delete(element), observer.unobserve(element)));
    if (some.length > 0) await typesetSome(some);
    await new Promise(done => setTimeout(done));
  };

  let isAtWork = false;
  const typesetNear = async () => {
    if (isAtWork) return;
    isAtWork = true;
    while (near.size > 0) await typesetWaiting([...near].slice(0, slice));
    isAtWork = false;
  };

  const observer = new IntersectionObserver(entries => {
    for (const { target, isIntersecting } of entries) {
      if (isIntersecting && waiting.has(target)) near.add(target);
      else near.delete(target);
    }
    typesetNear();
  }, { rootMargin: "100% 0px" });

  const typesetPage = async () => {
    const formulas = [...document.querySelectorAll(".tessaly-formula")];
    if (formulas.length <= eager) return typesetSome(formulas);
    for (const formula of formulas) {
      waiting.add(formula);
      observer.observe(formula);
    }
  };

  window.MathJax.options = { enableMenu: false };
  window.MathJax.startup = {
    // A page that asks for its formulas to be typeset while MathJax is about to do so by itself gets some of them twice;
    // so it is only done when asked for, one after the other.
    typeset: false,
    ready() {
      MathJax.startup.defaultReady();
      // Whenever a style sheet with fonts changes, or a font comes, the whole page is laid out anew. So the fonts have a
      // sheet of their own, and those that most formulas need come before the text.
      MathJax.startup.document.addStyleSheet();
      const { sheet } = document.getElementById("MJX-CHTML-styles");
      const fonts = document.head.appendChild(document.createElement("style"));
      for (let rule = sheet.cssRules.length - 1; rule >= 0; --rule) {
        if (!(sheet.cssRules[rule] instanceof CSSFontFaceRule)) continue;
        fonts.append(sheet.cssRules[rule].cssText);
        sheet.deleteRule(rule);
      }
      document.fonts.forEach(font => /^"?MJX(ZERO|TEX|TEX-I|TEX-S1|TEX-S2|TEX-A)"?$/.test(font.family) && font.load());
      typeset = MathJax.typesetPromise;
      MathJax.typesetPromise = () => {
        prepareContent(document.getElementById("content"));
        return (MathJax.startup.promise = MathJax.startup.promise.then(typesetPage));
      };
      // Resolves when nothing in view is waiting.
      MathJax.typesetInView = async () => {
        const isInView = ({ top, bottom }) => bottom > -innerHeight / 2 && top < innerHeight * 1.5;
        for (let pass = 0; pass < 10 && waiting.size > 0; ++pass) {
          const inView = [...waiting].filter(element => isInView(element.getBoundingClientRect()));
          if (inView.length === 0) break;
          await typesetWaiting(inView.slice(0, eager));
        }
      };
    },
  };
}
