document.documentElement.classList.add("scripted");
addFilter();
drawPlots();
keepLinks();
