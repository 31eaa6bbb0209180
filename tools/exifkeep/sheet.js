// The page's language is its root's; the style shows the texts of that one.
{
  const root = document.documentElement;
  const choice = document.querySelector("select");
  choice.value = root.lang;
  choice.addEventListener("change", () => { root.lang = choice.value; });
  choice.parentElement.hidden = false;
}
