// Loaded before MathJax: shows the scroll bar while the page scrolls or the pointer is near, as elsewhere in the program.
{
  const shown = 900; // Milliseconds.
  const edge = 14; // Pixels.
  const { classList } = document.documentElement;
  let end = 0;
  const show = () => {
    clearTimeout(end);
    classList.add("scrolling");
    end = setTimeout(() => classList.remove("scrolling"), shown);
  };
  addEventListener("scroll", show, { passive: true });
  addEventListener("mousemove", event => event.clientX > innerWidth - edge && show());
}
