-- Pages that are made from the documents lead to one another, not to the documents.
function Link(link)
  link.target = link.target:gsub("^manual%.md", "manual.html"):gsub("^command%-line%.md", "command-line.html")
  return link
end
