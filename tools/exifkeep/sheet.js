// The page's data has the texts of all languages. data-text is the number of an element's text.
{
  const texts = JSON.parse(document.querySelector("script[type='application/json']").textContent);
  const root = document.documentElement;
  const choice = document.querySelector("select");
  const elements = document.querySelectorAll("[data-text]");
  choice.value = root.lang;
  choice.addEventListener("change", () => {
    root.lang = choice.value;
    for (const element of elements) element.textContent = texts[root.lang][element.dataset.text];
  });
  choice.parentElement.hidden = false;
}
