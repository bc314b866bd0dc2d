// Runs before the tables are read: see .loading in page.css. If page.js does not
// run to its end, for any reason, all tables are shown.
"use strict";
document.documentElement.classList.add("loading");
document.addEventListener("DOMContentLoaded", () => {
  if (document.documentElement.classList.contains("loading")) {
    document.documentElement.classList.remove("loading");
    for (const section of document.querySelectorAll("section[hidden]")) {
      section.hidden = false;
    }
  }
});
